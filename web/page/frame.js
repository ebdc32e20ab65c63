// What stands around the panels: commands, start page, tabs, keys of the whole page.
const chooseFile = () => byId('chooser').click();

function buildCommands(app) {
  const example = make('select', { id: 'example', 'aria-label': say('example') }, make('option', { value: '' }, say('example')),
    ...Object.keys(app.examples).map((name) => make('option', { value: name }, say('examples')[name])));
  example.addEventListener('change', () => {
    const name = example.value;
    example.value = '';
    app.open(`${name}.txt`, app.examples[name]);
  });
  const step = (id, sign, name, by) => {
    const button = iconButton(sign, name, () => app.step(by));
    button.id = id;
    return button;
  };
  app.undoButton = step('undo', '↶', `${say('undo')} (Ctrl+Z)`, -1);
  app.redoButton = step('redo', '↷', `${say('redo')} (Ctrl+Y)`, 1);
  app.outputs = new OutputMenu(app);
  const open = make('button', { type: 'button', onclick: chooseFile, title: 'Ctrl+O' }, say('open'));
  const other = make('button', {
    type: 'button', id: 'language', lang: language === 'en' ? 'zh' : 'en', title: say('languageName'),
    'aria-label': say('languageName'), onclick: () => app.setLanguage(),
  }, say('language'));
  const colours = make('button', { type: 'button', id: 'theme', onclick: () => app.setTheme() });
  const commands = byId('commands');
  commands.setAttribute('aria-label', say('commands'));
  commands.replaceChildren(open, example, app.undoButton, app.redoButton, app.outputs.element, colours, other);
  showTheme();
}

function showTheme() {
  const button = byId('theme');
  button.textContent = themeSigns[theme];
  button.title = `${say('colours')}: ${say('themes')[theme]}`;
  button.setAttribute('aria-label', button.title);
}

function buildStart(app) {
  const choose = make('button', { type: 'button', onclick: chooseFile }, say('choose'));
  const examples = Object.entries(app.examples).map(([name, text]) =>
    make('button', { type: 'button', 'data-example': name, onclick: () => app.open(`${name}.txt`, text) }, say('examples')[name]));
  byId('start').replaceChildren(make('h2', {}, say('title')),
    make('p', { className: 'drop' }, `${say('drop')} `, choose),
    make('p', {}, say('orExample')), make('div', { className: 'tools examples' }, ...examples));
}

const tabNames = ['result', 'points', 'observations', 'parameters', 'text', 'compare'];

// Where the result stands beside the tabs, it is none of them.
const firstTab = () => (window.matchMedia('(min-width: 75rem)').matches ? 'observations' : 'result');

function buildTabs(app) {
  const tabs = byId('tabs');
  tabs.setAttribute('aria-label', say('tabs'));
  tabs.replaceChildren(...tabNames.map((name) => make('button', {
    type: 'button', role: 'tab', id: `tab-${name}`, 'aria-controls': `panel-${name}`, onclick: () => app.choose(name),
  }, say(name))));
  tabs.onkeydown = (event) => {
    const by = { ArrowRight: 1, ArrowLeft: -1 }[event.key];
    if (by === undefined) return;
    const shown = tabNames.filter((name) => byId(`tab-${name}`).offsetParent !== null);
    const next = shown[(shown.indexOf(app.tab) + by + shown.length) % shown.length];
    app.choose(next);
    byId(`tab-${next}`).focus();
  };
  for (const name of tabNames) byId(`panel-${name}`).setAttribute('aria-labelledby', `tab-${name}`);
}

function listenToWindow(app) {
  byId('chooser').addEventListener('change', (event) => app.openFile(event.target));
  window.addEventListener('dragover', (event) => event.preventDefault());
  window.addEventListener('drop', (event) => {
    event.preventDefault();
    app.openFile(event.dataTransfer);
  });
  window.addEventListener('keydown', (event) => {
    if (!(event.ctrlKey || event.metaKey) || event.altKey) return;
    const actions = { s: () => app.saveProject(), o: chooseFile };
    const hasOwnUndo = event.target.tagName === 'TEXTAREA';
    if (!hasOwnUndo) Object.assign(actions, { z: () => app.step(event.shiftKey ? 1 : -1), y: () => app.step(1) });
    const action = actions[event.key.toLowerCase()];
    if (action === undefined) return;
    event.preventDefault();
    action();
  });
  // Where the browser keeps nothing, it asks before it leaves.
  window.addEventListener('beforeunload', (event) => { if (app.isUnsaved && !app.isStored) event.preventDefault(); });
  // What was typed a moment ago is kept, too.
  document.addEventListener('visibilitychange', () => { if (document.hidden) app.store(); });
}
