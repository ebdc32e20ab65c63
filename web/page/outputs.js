// The menu of what can be saved.
class OutputMenu {
  constructor(owner) {
    this.owner = owner;
    this.list = make('div', { className: 'menu', role: 'menu', hidden: true });
    this.button = make('button', { type: 'button', id: 'save', 'aria-haspopup': 'menu', 'aria-expanded': 'false', onclick: () => this.toggle() }, `${say('save')} ▾`);
    this.element = make('div', { className: 'menu-place' }, this.button, this.list);
    this.list.addEventListener('keydown', (event) => this.move(event));
    this.element.addEventListener('focusout', (event) => {
      if (!this.element.contains(event.relatedTarget)) this.toggle(false);
    });
    for (const kind of ['project', 'html', 'report', 'json', 'svg', 'dxf']) this.add(kind, say(kind));
  }

  add(kind, text) {
    this.list.append(make('button', { type: 'button', role: 'menuitem', 'data-output': kind, onclick: () => this.choose(kind) }, text));
  }

  toggle(isOpen = this.list.hidden) {
    this.list.hidden = !isOpen;
    this.button.setAttribute('aria-expanded', isOpen);
    for (const item of this.list.children) {
      item.disabled = item.dataset.output !== 'project' && this.owner.verdict === null;
    }
    if (!isOpen) return;
    this.list.firstElementChild.focus();
    this.listTables();
  }

  // Each table is a file of its own.
  async listTables() {
    for (const item of [...this.list.querySelectorAll('[data-output$=".csv"]')]) item.remove();
    if (this.owner.verdict === null || !this.owner.isReadable) return;
    const names = await this.owner.engine.output('csv');
    if (names !== '') for (const name of JSON.parse(names)) this.add(name, `${say('csv')}: ${name.replace('.csv', '')}`);
  }

  move(event) {
    if (event.key === 'Escape') {
      this.toggle(false);
      this.button.focus();
    }
    const by = { ArrowDown: 1, ArrowUp: -1 }[event.key];
    if (by === undefined) return;
    event.preventDefault();
    const items = [...this.list.querySelectorAll('button:enabled')];
    items[(items.indexOf(document.activeElement) + by + items.length) % items.length].focus();
  }

  async choose(kind) {
    this.toggle(false);
    this.button.focus();
    if (kind === 'project') this.owner.saveProject();
    else await this.saveOutput(kind);
  }

  async saveOutput(kind) {
    const { engine, baseName } = this.owner;
    if (kind.endsWith('.csv')) {
      download(`${baseName}-${kind}`, await engine.output(kind), 'text/csv');
      return;
    }
    const [ending, type, output] = {
      html: ['html', 'text/html', 'html'], json: ['json', 'application/json', 'json'],
      svg: ['svg', 'image/svg+xml', 'svg'], dxf: ['dxf', 'application/dxf', 'dxf'], report: ['txt', 'text/plain', 'text'],
    }[kind];
    const suffix = kind === 'report' ? '-report' : '';
    download(`${baseName}${suffix}.${ending}`, await engine.output(output), type);
  }
}
