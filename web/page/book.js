// What there is to choose of a field book: plane or heights where it has both, and known points.
class BookBar {
  constructor(place, owner) {
    this.place = place;
    this.owner = owner;
  }

  // Of no use after an edit of the rows, which are a job of their own then.
  show({ kind, hasBoth }) {
    const { job } = this.owner;
    this.place.hidden = kind !== 'fieldbook' || job.source === null;
    if (this.place.hidden) return;
    const part = (name) => make('button', {
      type: 'button', 'aria-pressed': (job.reading.part ?? 'plane') === name, onclick: () => this.read({ part: name }),
    }, say(name));
    const chooser = make('input', { type: 'file', hidden: true, id: 'control-chooser' });
    chooser.addEventListener('change', async () => {
      if (chooser.files[0] !== undefined) this.read({ control: await textOfFile(chooser.files[0]) });
    });
    const control = make('button', { type: 'button', onclick: () => chooser.click() }, say('control'));
    this.place.replaceChildren(say('fieldbook'), ...(hasBoth ? [part('plane'), part('heights')] : []), control, chooser);
  }

  read(change) {
    const { job } = this.owner;
    this.owner.edit({ ...job, reading: { ...job.reading, ...change } });
  }
}
