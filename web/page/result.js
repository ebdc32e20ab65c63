// The report of the last adjustment in its panel, and the verdict above everything.
class ResultView {
  constructor(panel, owner) {
    this.panel = panel;
    this.owner = owner;
    this.kept = null;
    this.pause = 0;  // before the next report is made, so that showing a long one does not stop typing
    panel.addEventListener('click', (event) => this.click(event));
  }

  take(html, further, misfits) {
    const began = performance.now();
    const { scrollTop } = this.panel;
    this.panel.innerHTML = html;
    this.bar = make('div', { className: 'tools actions', hidden: true });
    this.panel.append(this.bar);
    const report = this.panel.querySelector('.report');
    this.owner.reportWords = { ...report.dataset };
    if (misfits !== '') this.addMisfits(report, misfits);
    this.kept = enhanceReport(report, this.kept, further);
    this.panel.scrollTop = scrollTop;
    const most = 1500;
    this.pause = Math.min(most, performance.now() - began);
  }

  // How the observations fitted before the adjustment.
  addMisfits(report, misfits) {
    report.append(make('h2', { id: 'misfits' }, say('misfits')));
    report.insertAdjacentHTML('beforeend', misfits);
    report.querySelector('nav')?.append(make('a', { href: '#misfits' }, say('misfits')));
  }

  clear() {
    this.panel.replaceChildren();
    this.kept = null;
  }

  // A finding leads to its line; a row of a table to where it is edited.
  click(event) {
    const finding = event.target.closest('li[data-source]');
    if (finding !== null) this.owner.goToLine(Number(finding.dataset.source));
    const row = event.target.closest('tr[data-l], tr[data-p]');
    if (row === null) return;
    this.offer(row);
    const byKey = event.detail === 0;
    if (byKey) this.bar.querySelector('button')?.focus();
  }

  // What can be done with what the row is about.
  offer(row) {
    const cells = [...row.cells].map((cell) => cell.textContent);
    const actions = row.dataset.p === undefined ? this.ofObservation(cells) : this.ofPoint(cells[0]);
    this.bar.replaceChildren(...actions);
    this.bar.hidden = actions.length === 0;
  }

  ofPoint(name) {
    const { owner } = this;
    const index = owner.job.points.findIndex((point) => point.name === name);
    if (index < 0) return [];
    return [make('span', {}, name), make('button', { type: 'button', onclick: () => owner.goToRow('points', index) }, say('editRow'))];
  }

  ofObservation([kind, from, to]) {
    const { owner } = this;
    const key = valueKeys.find((value) => say('kinds')[value] === kind);
    const index = owner.job.observations.findIndex((row) => row.from === from && row.to === to);
    if (key === undefined || index < 0) return [];
    const isOut = owner.job.observations[index].out.includes(key);
    const exclude = () => {
      this.bar.hidden = true;
      owner.edit(jobEdits.exclude(owner.job, index, [key], !isOut));
      owner.observations.mark();
    };
    return [make('span', {}, `${kind} ${from} – ${to}`),
      make('button', { type: 'button', onclick: exclude }, say(isOut ? 'include' : 'exclude')),
      make('button', { type: 'button', onclick: () => owner.goToRow('observations', index, key) }, say('editRow'))];
  }
}

// The headline and what to look at first.
function verdictBar(verdict, go) {
  const first = verdict.reasons[0] ?? verdict.remarks[0];
  const lead = first === undefined ? '' : make('button', { type: 'button', className: 'lead', onclick: () => go(first) }, first.text);
  return [make('strong', {}, verdict.headline), ' ', lead];
}
