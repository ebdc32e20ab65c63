// What there is to choose of a field book: plane or heights where it has both, known points, and the
// steps of its reduction.
class BookBar {
  constructor(place, owner) {
    this.place = place;
    this.owner = owner;
    this.parts = ['plane', 'heights'].map((name) => {
      const button = make('button', { type: 'button', onclick: () => this.read({ part: name }) }, say(name));
      button.dataset.part = name;
      return button;
    });
    const chooser = make('input', { type: 'file', hidden: true, id: 'control-chooser' });
    chooser.addEventListener('change', async () => {
      if (chooser.files[0] !== undefined) this.read({ control: await textOfFile(chooser.files[0]) });
      chooser.value = '';
    });
    const control = make('button', { type: 'button', onclick: () => chooser.click() }, say('control'));
    this.noControl = make('button', { type: 'button', onclick: () => this.read({ control: undefined }) }, say('noControl'));
    this.steps = new StepsForm((steps, key) => this.read({ steps }, `step ${key}`));
    place.replaceChildren(make('div', { className: 'tools' }, say('fieldbook'), ...this.parts, control, this.noControl, chooser),
      this.steps.element);
  }

  // Of no use after an edit of the rows, which are a job of their own then.
  show({ kind, hasBoth }) {
    const { reading, source } = this.owner.job;
    this.place.hidden = kind !== 'fieldbook' || source === null;
    for (const button of this.parts) {
      button.hidden = !hasBoth;
      button.setAttribute('aria-pressed', (reading.part ?? 'plane') === button.dataset.part);
    }
    this.noControl.hidden = reading.control === undefined;
    this.steps.show(reading.steps ?? {});
  }

  read(change, mark) {
    const { job } = this.owner;
    this.owner.edit({ ...job, reading: { ...job.reading, ...change } }, mark);
  }
}
