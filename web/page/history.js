// The states of a job in their order.  Edits with the same mark one after the other, such as typing in
// one field, are one step.
class History {
  constructor(job) {
    this.states = [job];
    this.place = 0;
    this.mark = '';
  }

  get present() { return this.states[this.place]; }
  get canUndo() { return this.place > 0; }
  get canRedo() { return this.place + 1 < this.states.length; }

  push(job, mark = '') {
    const continues = mark !== '' && mark === this.mark && this.canUndo && !this.canRedo;
    if (!continues) this.place += 1;
    this.states.length = this.place;
    this.states.push(job);
    this.mark = mark;
    const most = 500;
    if (this.states.length > most) {
      this.states.shift();
      this.place -= 1;
    }
  }

  // Puts a state in the place of the present one, with what was found out about it.
  amend(job) {
    this.states[this.place] = job;
  }

  step(by) {
    this.place = Math.min(Math.max(this.place + by, 0), this.states.length - 1);
    this.mark = '';
  }
}
