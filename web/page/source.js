// The text of the file with line numbers.
class SourceView {
  constructor(panel, owner) {
    this.owner = owner;
    this.numbers = make('pre', { className: 'numbers', 'aria-hidden': 'true' });
    this.area = make('textarea', { className: 'text', 'aria-label': say('lineNumbers'), wrap: 'off', spellcheck: false, autocomplete: 'off' });
    this.area.addEventListener('scroll', () => { this.numbers.scrollTop = this.area.scrollTop; });
    const typed = debounced(300, () => owner.edit({ ...owner.job, source: this.area.value }, 'text'));
    this.area.addEventListener('input', () => { this.count(); typed(); });
    panel.replaceChildren(make('div', { className: 'source' }, this.numbers, this.area));
    this.show();
  }

  show() {
    const text = textOfJob(this.owner.job);
    if (this.area.value === text) return;
    this.area.value = text;
    this.count();
  }

  count() {
    const lines = this.area.value.split('\n').length;
    if (lines === this.lines) return;
    this.lines = lines;
    this.numbers.textContent = Array.from({ length: lines }, (none, i) => i + 1).join('\n');
  }

  // Marks a line, counted from 1.
  reveal(line) {
    this.show();
    const lines = this.area.value.split('\n');
    const start = lines.slice(0, line - 1).reduce((sum, text) => sum + text.length + 1, 0);
    this.area.focus();
    this.area.setSelectionRange(start, start + (lines[line - 1] ?? '').length);
    const height = parseFloat(getComputedStyle(this.area).lineHeight);
    this.area.scrollTop = Math.max(0, (line - 1) * height - this.area.clientHeight / 2);
    this.area.scrollLeft = 0;
  }
}
