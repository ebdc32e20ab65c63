// The report of the last adjustment in its panel, and the verdict above everything.
class ResultView {
  constructor(panel, owner) {
    this.panel = panel;
    this.owner = owner;
    this.kept = null;
    panel.addEventListener('click', (event) => this.click(event));
  }

  take(html) {
    const { scrollTop } = this.panel;
    this.panel.innerHTML = html;
    const report = this.panel.querySelector('.report');
    this.owner.reportWords = { ...report.dataset };
    this.kept = enhanceReport(report, this.kept);
    this.panel.scrollTop = scrollTop;
  }

  clear() {
    this.panel.replaceChildren();
    this.kept = null;
  }

  // A finding leads to its line; a row of an observation or a point to where it is edited.
  click(event) {
    const finding = event.target.closest('li[data-source]');
    if (finding !== null) this.owner.goToLine(Number(finding.dataset.source));
  }

  dblclick() {}
}

// "A - P1" of a table row: the names of its first cells.
function verdictBar(verdict) {
  const first = verdict.reasons[0] ?? verdict.remarks[0] ?? '';
  return [make('strong', {}, verdict.headline), ' ', make('span', {}, first)];
}
