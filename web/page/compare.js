// Two variants side by side: A, which was kept, and the present one.
class CompareView {
  constructor(panel, owner) {
    this.panel = panel;
    this.owner = owner;
    this.compared = null;
    this.kept = null;
    this.show();
  }

  // What the engine found, or null.
  take(compared) {
    this.compared = compared;
    this.show();
  }

  show() {
    const { first } = this.owner;
    const commands = make('div', { className: 'tools' },
      make('button', { type: 'button', onclick: () => this.owner.keepFirst() }, say('keepA')));
    if (first !== null) {
      commands.append(make('button', { type: 'button', onclick: () => this.owner.backToFirst() }, say('backToA')),
        make('button', { type: 'button', onclick: () => this.owner.dropFirst() }, say('dropA')));
    }
    const parts = [commands];
    if (first === null) parts.push(make('p', { className: 'note' }, say('compareIntro')));
    else parts.push(this.heads(first), ...this.tables());
    this.panel.replaceChildren(...parts);
    const report = this.panel.querySelector('.report');
    if (report !== null) this.kept = enhanceReport(report, this.kept);
  }

  heads(first) {
    const head = (name, job, verdict) => make('div', { className: `variant ${verdict?.passed ? 'passed' : ''}` },
      make('strong', {}, `${name}: ${job.name}`), make('p', {}, verdict?.headline ?? ''));
    return make('div', { className: 'variants' }, head(say('variantA'), first.job, first.verdict),
      head(say('variantB'), this.owner.job, this.owner.verdict));
  }

  tables() {
    const { compared } = this;
    if (compared === null || compared.html === '') return [make('p', { className: 'note' }, say('noDifference'))];
    const report = make('div', { className: 'report' });
    Object.assign(report.dataset, this.owner.reportWords);
    report.innerHTML = compared.html;
    const list = (title, names) => (names.length === 0 ? null : make('p', {}, `${title}: ${names.join(', ')}`));
    return [report, list(say('onlyA'), compared.onlyA), list(say('onlyB'), compared.onlyB),
      make('p', { className: 'note' }, say('compareNote'))].filter((part) => part !== null);
  }
}
