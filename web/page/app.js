// The page: holds the job, runs the engine after every edit and shows what came of it.
class App {
  constructor(version) {
    this.version = version;
    this.history = new History(emptyJob());
    this.saved = this.job;
    this.first = null;     // variant A: {job, verdict, key}
    this.verdict = null;   // of the last adjustment
    this.findings = [];
    this.suspects = new Map();
    this.reportWords = {};
    this.isReadable = true;
    this.isWaiting = false;
    this.isStored = true;
    this.examples = JSON.parse(byId('examples').textContent);
    this.engine = new Engine((message, job) => this.hear(message, job));
    this.runSoon = debounced(120, () => this.run());
    this.storeSoon = debounced(300, () => this.store());
    this.build();
    listenToWindow(this);
    this.restore();
  }

  get job() { return this.history.present; }
  get hasJob() { return this.job.name !== ''; }
  get isUnsaved() { return this.hasJob && this.job !== this.saved; }
  get baseName() { return this.job.name.replace(/\.[^.]*$/, ''); }

  // The parts of the page, anew after a change of the language.
  build() {
    document.documentElement.lang = language;
    document.title = `Brenu – ${say('title')}`;
    buildCommands(this);
    buildStart(this);
    buildTabs(this);
    byId('footer').textContent = `${say('private')} Brenu ${this.version}`;
    this.points = new Grid(byId('panel-points'), 'points', this);
    this.observations = new Grid(byId('panel-observations'), 'observations', this);
    this.form = new ParameterForm(byId('panel-parameters'), this);
    this.source = new SourceView(byId('panel-text'), this);
    this.compare = new CompareView(byId('panel-compare'), this);
    this.book = new BookBar(byId('book'), this);
    this.result ??= new ResultView(byId('panel-result'), this);
    this.choose(this.tab ?? firstTab());
    this.showState();
  }

  choose(name) {
    this.tab = name;
    document.body.dataset.tab = name;
    for (const tab of byId('tabs').children) {
      const isChosen = tab.id === `tab-${name}`;
      tab.setAttribute('aria-selected', isChosen);
      tab.tabIndex = isChosen ? 0 : -1;
      if (isChosen) tab.scrollIntoView({ block: 'nearest', inline: 'nearest' });
      byId(tab.getAttribute('aria-controls')).classList.toggle('chosen', isChosen);
    }
    if (name === 'text') this.source?.show();
  }

  // ---- The job ----

  async openFile(source) {
    const file = source.files[0];
    if (file === undefined) return;
    const text = await textOfFile(file);
    if ('value' in source) source.value = '';
    await this.open(file.name, text);
  }

  async open(name, text) {
    if (this.isUnsaved) {
      const answer = await ask(say('throwAway'), { save: say('saveFirst'), discard: say('discard'), keep: say('keepEditing') });
      if (answer === 'save') this.saveProject();
      else if (answer !== 'discard') return;
    }
    this.history = new History({ ...emptyJob(), name, source: text, options: { ...this.job.options } });
    this.saved = this.job;
    this.verdict = null;
    this.suspects.clear();
    byId('verdict').replaceChildren();
    this.result.clear();
    byId('notes').open = false;
    if (!this.isReadable) this.choose(firstTab());
    const goesOn = byId('start').contains(document.activeElement);
    this.showAll();
    if (goesOn) byId(`tab-${this.tab}`).focus();
    this.storeSoon();
    this.run();
  }

  edit(job, mark) {
    this.history.push(job, mark);
    this.changed();
  }

  step(by) {
    this.history.step(by);
    this.changed();
    this.showAll();
  }

  changed() {
    this.showState();
    if (this.tab === 'text' && document.activeElement !== this.source.area) this.source.show();
    this.storeSoon();
    this.isWaiting = true;  // for more to be typed
    this.runSoon();
  }

  saveProject() {
    if (!this.hasJob) return;
    const text = projectText(this.job).text;
    download(`${this.baseName}.txt`, text);
    this.saved = this.job;
    const out = this.job.observations.reduce((sum, row) => sum + row.out.length, 0);
    if (out > 0) this.tell(say('leftOut')(out));
    this.showState();
    this.storeSoon();
  }

  async store() {
    if (!this.hasJob) return;
    this.isStored = await storage.save('present', { job: this.job, isUnsaved: this.isUnsaved, first: this.first });
  }

  // Language and colours, which hold without a job, too.
  prefer() {
    storage.save('preferences', { language, theme });
  }

  async restore() {
    const preferences = await storage.load('preferences');
    if (preferences !== undefined) {
      ({ language } = preferences);
      chooseTheme(preferences.theme);
      this.build();
    }
    const state = await storage.load('present');
    if (state === undefined || this.hasJob) return;
    this.history = new History(state.job);
    this.saved = state.isUnsaved ? null : this.job;
    this.first = state.first ?? null;
    this.showAll();
    this.run();
  }

  // ---- The engine ----

  run() {
    this.isWaiting = false;
    if (!this.hasJob) return;
    const { job } = this;
    this.project = job.source === null ? projectText(job) : null;
    this.engine.run({
      job, text: this.project?.text ?? job.source, reading: job.reading, withRows: job.source !== null, language,
      options: { ...job.options, file: job.name }, first: this.first?.request ?? null, pause: this.result.pause,
    });
    byId('verdict').classList.add('outdated');
    this.progressSoon ??= setTimeout(() => this.showProgress(say('starting')), 250);
  }

  hear(message, job) {
    if (message.stage !== undefined) {
      this.stage = `${say(message.stage) ?? message.stage} ${message.round || ''}`;
      if (!byId('progress').hidden) this.showProgress(this.stage);
      return;
    }
    if (message.opened !== undefined) this.takeOpened(message, job.job);
    if (message.adjusted !== undefined) this.takeAdjusted(message.adjusted);
    if (message.body !== undefined) {
      this.result.take(message.body, message.further, message.misfits);
      this.compare.take(message.compared);
    }
    if (message.failed !== undefined) this.tell(`${say('failed')}: ${message.failed}`);
    if (message.done || message.failed !== undefined) this.endProgress();
  }

  takeOpened({ opened, rows }, job) {
    this.isReadable = opened.ok;
    this.findings = opened.findings;
    this.book.show(opened);
    if (rows !== null && this.job.source === job.source && this.job.reading === job.reading) {
      const isSaved = this.saved === this.job;
      this.history.amend({ ...this.job, ...rowsOfEngine(rows) });
      if (isSaved) this.saved = this.job;
      this.showAll();
    }
    if (opened.ok) return;
    this.verdict = { passed: false, headline: say('unread'), reasons: opened.findings.slice(0, 1), remarks: [] };
    this.result.clear();
    this.showVerdict();
    this.choose('text');
  }

  takeAdjusted(adjusted) {
    this.verdict = adjusted;
    this.findings = adjusted.findings;
    this.suspects = new Map(adjusted.suspects.map(([from, to, kind, w]) => [[from, to, kind].join('\n'), w]));
    this.showVerdict();
  }

  // ---- Variants ----

  keepFirst() {
    const { job } = this;
    this.first = {
      job, verdict: { passed: this.verdict?.passed, headline: this.verdict?.headline },
      request: { text: textOfJob(job), reading: job.reading, options: { ...job.options, file: job.name } },
    };
    this.storeSoon();
    this.run();
    this.compare.show();
  }

  backToFirst() {
    this.edit(this.first.job);
    this.showAll();
  }

  dropFirst() {
    this.first = null;
    this.compare.take(null);
    this.storeSoon();
  }

  // ---- What is seen ----

  setLanguage() {
    language = language === 'en' ? 'zh' : 'en';
    this.prefer();
    this.build();
    byId('language').focus();
    this.run();
  }

  setTheme() {
    chooseTheme(nextTheme());
    this.prefer();
    showTheme();
  }

  showAll() {
    this.showState();
    this.points.show();
    this.observations.show();
    this.form.show();
    if (this.tab === 'text') this.source.show();
    this.compare.show();
  }

  showState() {
    byId('start').hidden = this.hasJob;
    byId('work').hidden = !this.hasJob;
    byId('status').hidden = !this.hasJob;
    byId('file-name').textContent = this.job.name;
    const unsaved = byId('unsaved');
    unsaved.hidden = !this.isUnsaved;
    unsaved.title = say('unsaved');
    unsaved.setAttribute('aria-label', say('unsaved'));
    this.undoButton.disabled = !this.history.canUndo;
    this.redoButton.disabled = !this.history.canRedo;
    this.outputs.button.disabled = !this.hasJob;
  }

  showVerdict() {
    const bar = byId('verdict');
    bar.classList.remove('outdated');
    bar.classList.toggle('passed', this.verdict.passed);
    bar.replaceChildren(...verdictBar(this.verdict, (finding) => this.goToFinding(finding)));
    this.points.mark();
    this.observations.mark();
    this.points.message.hidden = this.isReadable;
    this.observations.message.hidden = this.isReadable;
    this.showFindings();
  }

  showFindings() {
    const most = 200;
    const notes = byId('notes');
    const items = this.findings.slice(0, most).map((finding) => {
      const go = () => this.goToFinding(finding);
      return make('li', { className: finding.severity }, make('button', { type: 'button', onclick: go }, finding.text));
    });
    notes.hidden = this.findings.length === 0;
    notes.replaceChildren(make('summary', {}, say('findings')(this.findings.length)), make('ul', {}, ...items));
    if (!this.isReadable) notes.open = true;
  }

  showProgress(text) {
    const progress = byId('progress');
    progress.hidden = false;
    progress.replaceChildren(make('progress', {}), ` ${text} `,
      make('button', { type: 'button', onclick: () => this.cancel() }, say('cancel')));
  }

  endProgress() {
    if (this.engine.job !== null) return;
    clearTimeout(this.progressSoon);
    this.progressSoon = undefined;
    byId('progress').hidden = true;
  }

  cancel() {
    this.engine.stop();
    this.endProgress();
    this.tell(say('cancelled'), make('button', { type: 'button', onclick: () => this.run() }, say('again')));
  }

  tell(text, ...more) {
    const progress = byId('progress');
    progress.hidden = false;
    progress.replaceChildren(`${text} `, ...more);
  }

  // ---- From findings to rows ----

  severityOf(table, index) {
    const line = this.project?.lineOf[table][index];
    if (line === undefined) return '';
    const found = this.findings.filter((finding) => finding.line === line).map((finding) => finding.severity);
    return ['error', 'warning', 'note'].find((severity) => found.includes(severity)) ?? '';
  }

  goToFinding(finding) {
    if (finding.line !== null) {
      this.goToLine(finding.line);
      return;
    }
    const [from, to] = finding.names;
    const pair = this.job.observations.findIndex((row) => row.from === from && row.to === to);
    const point = this.job.points.findIndex((row) => row.name === from);
    if (pair >= 0) this.goToRow('observations', pair);
    else if (point >= 0) this.goToRow('points', point);
    else this.choose(finding.code.startsWith('closure') ? 'result' : 'parameters');
  }

  goToLine(line) {
    const row = this.project?.rowOfLine.get(line);
    if (row !== undefined) {
      this.goToRow(row.table, row.index);
      return;
    }
    this.choose('text');
    this.source.reveal(line);
  }

  goToRow(table, index, key) {
    this.choose(table);
    (table === 'points' ? this.points : this.observations).reveal(index, key);
  }
}

function startApp(version) {
  window.brenu = new App(version);
}
