'use strict';
// Sorting, filtering and pages of the tables, zoom of the sketch, links between both.  `root` holds the
// report.  `kept` is what an earlier call on the report's predecessor returned: the view stays as it was.
// `further` has the contents of the elements noscript that were taken out of the report, by section.
function enhanceReport(root, kept = null, further = {}) {
  const words = root.dataset;
  const pageSize = 200;

  // "45 07 05.3" as a number of degrees, "1.2" as a number; NaN for other texts.
  function numberOf(text) {
    if (!/^-?\d+(\.\d+)?( \d\d(\.\d+)?){0,2}$/.test(text)) return NaN;
    const parts = text.replace('-', '').split(' ').map(Number);
    const value = parts[0] + (parts[1] || 0) / 60 + (parts[2] || 0) / 3600;
    return text.startsWith('-') ? -value : value;
  }

  const entities = { '&lt;': '<', '&gt;': '>', '&quot;': '"', '&amp;': '&' };
  function cellsOf(row) {
    row.cells ??= row.html.split('</td>').slice(0, -1).map((cell) =>
      cell.slice(cell.lastIndexOf('>') + 1).replace(/&(lt|gt|quot|amp);/g, (e) => entities[e]));
    return row.cells;
  }

  function element(name, attributes, text) {
    const made = document.createElement(name);
    Object.assign(made, attributes);
    if (text !== undefined) made.textContent = text;
    return made;
  }

  const linkedRows = 'tr[data-p], tr[data-l]';

  class DataTable {
    constructor(section) {
      this.section = section;
      this.table = section.querySelector('table.data');
      this.body = this.table.tBodies[0];
      this.rows = [...this.body.rows].map((row) => ({ html: row.outerHTML }));
      const text = further[section.id] ?? section.querySelector('noscript')?.textContent;
      if (text !== undefined) {
        const body = text.slice(text.indexOf('<tbody>') + 7, text.lastIndexOf('</tbody>'));
        for (const line of body.split('\n')) if (line.startsWith('<tr')) this.rows.push({ html: line });
      }
      this.kept = this.rows;
      this.page = 0;
      this.addHeadings();
      if (this.rows.length > 10) this.addTools();
      this.show();
    }

    addHeadings() {
      this.headings = [...this.table.tHead.rows[0].cells];
      this.headings.forEach((heading, column) => {
        const button = element('button', { type: 'button' }, heading.textContent);
        button.addEventListener('click', () => this.sort(column));
        heading.replaceChildren(button);
      });
    }

    addTools() {
      this.filter = element('input', { type: 'search', placeholder: words.filter });
      this.filter.setAttribute('aria-label', words.filter);
      this.filter.addEventListener('input', () => this.select((row) => {
        const wanted = this.filter.value.trim().toLowerCase();
        return wanted.split(/\s+/).every((word) => cellsOf(row).some((c) => c.toLowerCase().includes(word)));
      }));
      this.flagged = element('button', { type: 'button' }, words.flagged);
      this.flagged.addEventListener('click', () =>
        this.select((row) => /^<tr[^>]*class="(flag|weak|not)"/.test(row.html)));
      this.all = element('button', { type: 'button' }, words.all);
      this.all.addEventListener('click', () => this.reset());
      this.back = element('button', { type: 'button' }, '\u2039');
      this.back.setAttribute('aria-label', words.back);
      this.back.addEventListener('click', () => this.turn(-1));
      this.forward = element('button', { type: 'button' }, '\u203a');
      this.forward.setAttribute('aria-label', words.forward);
      this.forward.addEventListener('click', () => this.turn(1));
      this.place = element('span', { role: 'status' });
      const tools = element('div', { className: 'tools' });
      tools.append(this.filter);
      if (this.table.querySelector('tr.flag, tr.weak, tr.not')) tools.append(this.flagged);
      tools.append(this.all, this.back, this.place, this.forward);
      this.table.parentElement.before(tools);
    }

    reset() {
      this.filter.value = '';
      this.select(() => true);
    }

    select(keeps) {
      this.kept = this.rows.filter(keeps);
      this.page = 0;
      this.show();
    }

    sort(column) {
      const heading = this.headings[column];
      const order = heading.getAttribute('aria-sort') === 'ascending' ? -1 : 1;
      for (const other of this.headings) other.removeAttribute('aria-sort');
      heading.setAttribute('aria-sort', order > 0 ? 'ascending' : 'descending');
      const collator = new Intl.Collator(undefined, { numeric: true });
      const keys = new Map(this.rows.map((row) => {
        const text = cellsOf(row)[column];
        return [row, { text, number: numberOf(text) }];
      }));
      const compare = (a, b) => {
        const [one, other] = [keys.get(a), keys.get(b)];
        const missing = (one.text === '-') - (other.text === '-');
        if (missing !== 0) return missing;
        const both = one.number - other.number;
        return order * (Number.isNaN(both) ? collator.compare(one.text, other.text) : both);
      };
      this.rows.sort(compare);
      this.kept = this.kept === this.rows ? this.rows : [...this.kept].sort(compare);
      this.page = 0;
      this.show();
    }

    // Takes over order, filter and page.
    restore(other) {
      if (other === undefined) return;
      const column = other.headings.findIndex((heading) => heading.hasAttribute('aria-sort'));
      if (column >= 0) {
        this.sort(column);
        if (other.headings[column].getAttribute('aria-sort') === 'descending') this.sort(column);
      }
      if (this.filter && other.filter && other.filter.value !== '') {
        this.filter.value = other.filter.value;
        this.filter.dispatchEvent(new Event('input'));
      }
      this.page = Math.min(other.page, Math.max(0, Math.ceil(this.kept.length / pageSize) - 1));
      this.show();
    }

    turn(by) {
      this.page += by;
      this.show();
    }

    show() {
      const first = this.page * pageSize;
      const last = Math.min(first + pageSize, this.kept.length);
      this.body.innerHTML = this.kept.slice(first, last).map((row) => row.html).join('');
      const row = this.body.rows[0];
      if (row?.matches(linkedRows)) row.tabIndex = 0;
      if (!this.place) return;
      this.place.textContent = this.kept.length === 0 ? '0' : `${first + 1}\u2013${last} / ${this.kept.length}`;
      this.back.disabled = first === 0;
      this.forward.disabled = last === this.kept.length;
      mark();
    }

    // Turns to the row that holds the text, and says whether there is one.
    reveal(text) {
      if (this.filter && !this.kept.some((row) => row.html.includes(text))) this.reset();
      const index = this.kept.findIndex((row) => row.html.includes(text));
      if (index < 0) return false;
      this.page = Math.floor(index / pageSize);
      this.show();
      const row = this.body.rows[index % pageSize];
      row.scrollIntoView({ block: 'center' });
      row.tabIndex = -1;
      row.focus({ preventScroll: true });
      return true;
    }
  }

  // What stands out, as selectors of the sketch and of the tables.
  let selection = { sketch: '', rows: '' };
  const sketch = root.querySelector('.sketch > svg');

  function mark() {
    for (const old of root.querySelectorAll('.selected')) old.classList.remove('selected');
    if (selection.rows !== '') {
      for (const row of root.querySelectorAll(selection.rows)) row.classList.add('selected');
    }
    if (sketch === null || selection.sketch === '') return;
    for (const drawn of sketch.querySelectorAll(selection.sketch)) drawn.classList.add('selected');
  }

  function choosePoint(point) {
    selection = {
      sketch: `[data-point="${point}"],[data-ellipse="${point}"],[data-label="${point}"]`,
      rows: `tr[data-p="${point}"]`,
    };
    mark();
  }

  function chooseLine(line) {
    selection = { sketch: `[data-line="${line}"]`, rows: `tr[data-l="${line}"]` };
    mark();
  }

  const over = new AbortController();
  const tables = [...root.querySelectorAll('section:has(table.data)')].map((s) => new DataTable(s));

  root.addEventListener('click', (event) => {
    const row = event.target.closest(linkedRows);
    if (row === null) return;
    if (row.dataset.p !== undefined) choosePoint(row.dataset.p);
    else chooseLine(row.dataset.l);
    const link = event.target.closest('td');
    if (link !== null && link.cellIndex <= 2) sketch?.scrollIntoView({ block: 'center' });
  });

  // Up and down go from row to row, Enter does what a click does.
  root.addEventListener('keydown', (event) => {
    const row = event.target;
    if (!row.matches(linkedRows)) return;
    const next = { ArrowDown: row.nextElementSibling, ArrowUp: row.previousElementSibling }[event.key];
    if (event.key === 'Enter') row.click();
    else if (next) {
      next.tabIndex = -1;
      next.focus();
    } else return;
    event.preventDefault();
  });

  function zoomable(svg) {
    const box = svg.viewBox.baseVal;
    const whole = { x: box.x, y: box.y, width: box.width, height: box.height };
    const zoom = (factor, at) => {
      const width = Math.min(whole.width, Math.max(whole.width / 200, box.width * factor));
      const scale = width / box.width;
      box.x = at.x - (at.x - box.x) * scale;
      box.y = at.y - (at.y - box.y) * scale;
      box.width = width;
      box.height *= scale;
      if (width === whole.width) Object.assign(box, whole);
    };
    const centre = () => ({ x: box.x + box.width / 2, y: box.y + box.height / 2 });
    const placeOf = (event) => {
      const place = new DOMPoint(event.clientX, event.clientY);
      return place.matrixTransform(svg.getScreenCTM().inverse());
    };
    const tools = element('div', { className: 'tools' });
    const actions = { '+': () => zoom(0.7, centre()), '\u2212': () => zoom(1 / 0.7, centre()), '\u2b1a': () => Object.assign(box, whole) };
    const names = [words.closer, words.farther, words.whole];
    Object.entries(actions).forEach(([sign, action], i) => {
      const button = element('button', { type: 'button', title: names[i] }, sign);
      button.setAttribute('aria-label', names[i]);
      button.addEventListener('click', action);
      tools.append(button);
    });
    svg.before(tools);
    svg.parentElement.classList.add('zooms');
    svg.addEventListener('wheel', (event) => {
      if (!event.ctrlKey && !event.metaKey) return;
      event.preventDefault();
      zoom(event.deltaY < 0 ? 0.8 : 1.25, placeOf(event));
    }, { passive: false });
    // One pointer moves the picture, two draw it closer.
    const pointers = new Map();
    let moved = false;
    svg.addEventListener('pointerdown', (event) => {
      pointers.set(event.pointerId, placeOf(event));
      moved = false;
    });
    svg.addEventListener('pointermove', (event) => {
      const from = pointers.get(event.pointerId);
      if (from === undefined) return;
      const to = placeOf(event);
      if (pointers.size === 2) {
        const other = [...pointers].find(([id]) => id !== event.pointerId)[1];
        const [before, after] = [from, to].map((p) => Math.hypot(p.x - other.x, p.y - other.y));
        if (after > 0) zoom(before / after, other);
        pointers.set(event.pointerId, placeOf(event));
      } else if (box.width < whole.width) {
        box.x -= to.x - from.x;
        box.y -= to.y - from.y;
      }
      moved ||= Math.hypot(to.x - from.x, to.y - from.y) > box.width / 200;
    });
    for (const end of ['pointerup', 'pointerleave', 'pointercancel']) {
      svg.addEventListener(end, (event) => pointers.delete(event.pointerId));
    }
    svg.addEventListener('click', (event) => {
      if (moved) return;
      const drawn = event.target.closest('[data-point], [data-ellipse], [data-label], [data-line]');
      if (drawn === null) return;
      const { point, ellipse, label, line } = drawn.dataset;
      const name = point ?? ellipse ?? label;
      if (name !== undefined) choosePoint(name);
      else chooseLine(line);
      const text = name !== undefined ? `<tr data-p="${name}"` : `<tr data-l="${line}"`;
      tables.find((table) => table.reveal(text));
    });
    svg.tabIndex = 0;
    svg.addEventListener('keydown', (event) => {
      const step = box.width / 10;
      const keys = {
        '+': () => zoom(0.7, centre()), '-': () => zoom(1 / 0.7, centre()), 0: () => Object.assign(box, whole),
        ArrowLeft: () => { box.x -= step; }, ArrowRight: () => { box.x += step; },
        ArrowUp: () => { box.y -= step; }, ArrowDown: () => { box.y += step; },
      };
      if (!(event.key in keys) || event.ctrlKey) return;
      event.preventDefault();
      keys[event.key]();
    });
  }
  if (sketch !== null) zoomable(sketch);

  // Before printing every row that is kept stands on the page.
  window.addEventListener('beforeprint', () => {
    for (const table of tables) {
      if (table.kept.length <= 5000) table.body.innerHTML = table.kept.map((row) => row.html).join('');
    }
  }, { signal: over.signal });
  window.addEventListener('afterprint', () => tables.forEach((table) => table.show()), { signal: over.signal });

  if (kept) {
    kept.over.abort();
    for (const table of tables) table.restore(kept.tables.find((other) => other.section.id === table.section.id));
  }
  return { tables, over };
}
