// A table of rows that are edited in place.
class Grid {
  // table: 'points' or 'observations'; `owner` has the job and takes the edits.
  constructor(panel, table, owner) {
    this.panel = panel;
    this.table = table;
    this.owner = owner;
    this.page = 0;
    this.filterText = '';
    this.pageSize = 100;
    this.build();
  }

  get keys() { return this.table === 'points' ? pointKeys : observationKeys; }
  get rows() { return this.owner.job[this.table]; }

  build() {
    const isPoints = this.table === 'points';
    this.filter = make('input', { type: 'search', placeholder: say('filter'), 'aria-label': say('filter'), value: this.filterText });
    this.filter.addEventListener('input', () => { this.filterText = this.filter.value; this.page = 0; this.show(); });
    this.back = iconButton('‹', say('back'), () => { this.page -= 1; this.show(); });
    this.forward = iconButton('›', say('forward'), () => { this.page += 1; this.show(); });
    this.place = make('span', { role: 'status' });
    const add = make('button', { type: 'button', onclick: () => this.add() }, say(isPoints ? 'addPoint' : 'addObservation'));
    this.message = make('p', { className: 'note', hidden: true }, say('rowsUnread'));
    this.body = make('tbody');
    const heading = (text) => make('th', { scope: 'col' }, text);
    this.headings = new Map(this.keys.map((key) => [key, heading(say(key))]));
    const head = make('tr', {}, ...(isPoints ? [] : [heading(say('use'))]), ...this.headings.values(), heading(''));
    this.grid = make('table', { className: 'data grid brief', 'aria-label': say(this.table) }, make('thead', {}, head), this.body);
    const whole = make('input', { type: 'checkbox' });
    whole.addEventListener('change', () => this.grid.classList.toggle('brief', !whole.checked));
    this.whole = make('label', {}, whole, ` ${say('allColumns')}`);
    this.panel.replaceChildren(
      make('div', { className: 'tools' }, this.filter, this.back, this.place, this.forward, add, this.whole),
      this.message, make('div', { className: 'wide' }, this.grid));
    this.body.addEventListener('input', (event) => this.type(event));
    this.body.addEventListener('change', (event) => this.change(event));
    this.body.addEventListener('click', (event) => this.click(event));
    this.body.addEventListener('keydown', (event) => this.move(event));
    this.show();
  }

  // Row numbers that the filter keeps.
  kept() {
    const words = this.filterText.trim().toLowerCase().split(/\s+/).filter((word) => word !== '');
    const numbers = [...this.rows.keys()];
    if (words.length === 0) return numbers;
    return numbers.filter((number) => {
      const text = this.keys.map((key) => this.rows[number][key]).join(' ').toLowerCase();
      return words.every((word) => text.includes(word));
    });
  }

  show() {
    const kept = this.kept();
    const last = Math.max(0, Math.ceil(kept.length / this.pageSize) - 1);
    this.page = Math.min(Math.max(this.page, 0), last);
    const from = this.page * this.pageSize;
    const shown = kept.slice(from, from + this.pageSize);
    this.place.textContent = kept.length === 0 ? say('none') : `${from + 1}–${from + shown.length} / ${kept.length}`;
    this.back.disabled = this.page === 0;
    this.forward.disabled = this.page === last;
    this.message.hidden = this.owner.isReadable;
    this.unused = this.unusedKeys();
    this.whole.hidden = this.unused.length === 0;
    for (const [key, heading] of this.headings) heading.classList.toggle('unused', this.unused.includes(key));
    const focused = this.focused();
    this.body.replaceChildren(...shown.map((number) => this.row(number)));
    this.mark();
    if (focused !== null) this.body.querySelector(focused)?.focus();
  }

  // Selects what has the focus, in the row of the same number; null for nothing here.
  focused() {
    const active = document.activeElement;
    if (!this.body.contains(active)) return null;
    const data = Object.entries(active.dataset).map(([name, value]) => `[data-${name}="${value}"]`);
    return `tr[data-row="${this.numberOf({ target: active })}"] ${data.join('')}`;
  }

  // Columns without a value.
  unusedKeys() {
    const values = this.table === 'points' ? ['x', 'y', 'h'] : valueKeys;
    const unused = values.filter((key) => this.rows.every((row) => row[key] === ''));
    return unused.length === values.length ? [] : unused;
  }

  row(number) {
    const row = this.rows[number];
    const cells = this.keys.map((key) => make('td', { className: `${valueKeys.includes(key) ? 'value' : ''} ${this.unused.includes(key) ? 'unused' : ''}` }, this.field(row, number, key),
      valueKeys.includes(key) ? this.excluder(row, key) : null));
    const remove = iconButton('✕', `${say('remove')} ${row.name ?? `${row.from} ${row.to}`}`);
    remove.dataset.action = 'remove';
    if (this.table === 'observations') {
      const use = make('input', { type: 'checkbox', 'aria-label': `${say('use')} ${row.from} ${row.to}` });
      use.dataset.action = 'use';
      cells.unshift(make('td', {}, use));
    }
    const made = make('tr', {}, ...cells, make('td', {}, remove));
    made.dataset.row = number;
    return made;
  }

  field(row, number, key) {
    const name = `${say(key)}, ${row.name ?? `${row.from} – ${row.to}`}`;
    if (key === 'type') {
      const options = Object.entries(say('types')).sort(([a], [b]) => a.localeCompare(b));
      if (!options.some(([value]) => value === row.type)) options.push([row.type, row.type]);
      const select = make('select', { 'aria-label': name }, ...options.map(([value, text]) => make('option', { value }, text)));
      select.value = row.type;
      select.dataset.key = key;
      return select;
    }
    const isNumber = !['name', 'from', 'to'].includes(key);
    const input = make('input', { value: row[key], 'aria-label': name, autocomplete: 'off', spellcheck: false, inputMode: isNumber ? 'decimal' : 'text', className: isNumber ? 'n' : '' });
    input.dataset.key = key;
    return input;
  }

  excluder(row, key) {
    const button = make('button', { type: 'button', className: 'excluder' }, '⊘');
    button.dataset.action = 'exclude';
    button.dataset.of = key;
    return button;
  }

  // What stands out: values left out, suspects, rows with findings.
  mark() {
    for (const made of this.body.rows) {
      const number = Number(made.dataset.row);
      const row = this.rows[number];
      const severity = this.owner.severityOf(this.table, number);
      made.className = severity === '' ? '' : `has-${severity}`;
      if (this.table === 'points') continue;
      const given = valueKeys.filter((key) => row[key] !== '');
      const use = made.querySelector('[data-action=use]');
      const used = given.filter((key) => !row.out.includes(key));
      use.checked = used.length > 0;
      use.indeterminate = used.length > 0 && used.length < given.length;
      made.classList.toggle('out', used.length === 0 && given.length > 0);
      for (const button of made.querySelectorAll('.excluder')) {
        const key = button.dataset.of;
        const isOut = row.out.includes(key);
        const w = this.owner.suspects.get([row.from, row.to, kindOfKey[key]].join('\n'));
        button.hidden = row[key] === '';
        button.setAttribute('aria-pressed', isOut);
        button.title = `${say(isOut ? 'include' : 'exclude')}: ${say('kinds')[key]} ${row.from} – ${row.to}`;
        button.setAttribute('aria-label', button.title);
        const cell = button.parentElement;
        cell.classList.toggle('out', isOut);
        cell.classList.toggle('suspect', w !== undefined);
        cell.title = w === undefined ? '' : `w = ${w === null ? '-' : w.toFixed(1)}`;
      }
    }
  }

  numberOf(event) {
    const row = event.target.closest('tr');
    return row === null ? -1 : Number(row.dataset.row);
  }

  // Numbers count while they are typed, names when they are complete.
  type(event) {
    const { key } = event.target.dataset;
    if (key === undefined || ['name', 'from', 'to', 'type'].includes(key)) return;
    this.set(event, key);
  }

  change(event) {
    const number = this.numberOf(event);
    if (event.target.dataset.action === 'use') {
      const given = valueKeys.filter((key) => this.rows[number][key] !== '');
      this.owner.edit(jobEdits.exclude(this.owner.job, number, given, !event.target.checked));
      this.mark();
      return;
    }
    const { key } = event.target.dataset;
    if (['name', 'from', 'to', 'type'].includes(key)) this.set(event, key);
  }

  set(event, key) {
    const field = event.target;
    const number = this.numberOf(event);
    const isWrong = field.value.includes(',') && key !== 'type';
    field.setCustomValidity?.(isWrong ? say('noComma') : '');
    if (isWrong) {
      field.reportValidity();
      return;
    }
    if (this.rows[number][key] === field.value) return;
    this.owner.edit(jobEdits.set(this.owner.job, this.table, number, key, field.value), `${this.table} ${number} ${key}`);
    this.mark();
  }

  click(event) {
    const button = event.target.closest('button');
    if (button === null) return;
    const number = this.numberOf(event);
    if (button.dataset.action === 'remove') {
      this.owner.edit(jobEdits.remove(this.owner.job, this.table, number));
      this.show();
    } else {
      const key = button.dataset.of;
      this.owner.edit(jobEdits.exclude(this.owner.job, number, [key], !this.rows[number].out.includes(key)));
      this.mark();
    }
  }

  // Up, down and Enter go to the same field of the neighbouring row.
  move(event) {
    const by = { ArrowUp: -1, ArrowDown: 1, Enter: 1 }[event.key];
    const { key } = event.target.dataset;
    if (by === undefined || key === undefined || event.target.tagName === 'SELECT') return;
    const row = event.target.closest('tr');
    const other = by < 0 ? row.previousElementSibling : row.nextElementSibling;
    const field = other?.querySelector(`[data-key="${key}"]`);
    event.preventDefault();
    if (field === null || field === undefined) {
      event.target.dispatchEvent(new Event('change', { bubbles: true }));
      return;
    }
    field.focus();
    field.select();
  }

  add() {
    this.filter.value = '';
    this.filterText = '';
    this.owner.edit(jobEdits.add(this.owner.job, this.table));
    this.reveal(this.rows.length - 1);
  }

  // Turns to the row and puts the cursor there.
  reveal(number, key = this.keys[0]) {
    if (!this.kept().includes(number)) this.filterText = this.filter.value = '';
    this.page = Math.floor(this.kept().indexOf(number) / this.pageSize);
    this.show();
    const field = this.body.querySelector(`tr[data-row="${number}"] [data-key="${key}"]`);
    field?.scrollIntoView({ block: 'center' });
    field?.focus();
  }
}
