// The parameters of the job and the options of the computation as a form.
class ParameterForm {
  constructor(panel, owner) {
    this.owner = owner;
    this.fields = new Map();
    const grades = Object.fromEntries([2, 3, 4, 5, 6, 7, 8].map((grade) => [grade, String(grade)]));
    const alphas = { 0: say('noSnooping'), 0.001: '0.1 %', 0.01: '1 %', 0.05: '5 %' };
    panel.replaceChildren(make('form', { className: 'parameters', onsubmit: (event) => event.preventDefault() },
      this.group('standardErrors', this.number('MO', 1), this.number('MS', 1000), this.number('MR', 1e6), this.number('levelSigma', 1000, true)),
      this.group('computation', this.choice('format', say('formats')), this.choice('rules', say('ruleSets'), true), this.choice('alpha', alphas, true)),
      this.group('limits', this.choice('Lvl1', grades), this.number('Lvl1Limit', 1), this.choice('Lvl2', grades), this.number('Lvl2Limit', 1), this.number('Limit', 1))));
    this.show();
  }

  group(title, ...fields) {
    return make('fieldset', {}, make('legend', {}, say(title)), ...fields);
  }

  // A field that shows `scale` times what the job holds.
  number(key, scale, isOption = false) {
    const input = make('input', { inputMode: 'decimal', autocomplete: 'off' });
    const put = () => {
      const value = Number(input.value);
      const isValid = input.value.trim() !== '' && Number.isFinite(value);
      input.setAttribute('aria-invalid', !isValid);
      if (isValid) this.set(key, isOption ? value / scale : numberText(value / scale), isOption);
    };
    input.addEventListener('input', put);
    this.fields.set(key, (value) => {
      if (document.activeElement !== input) input.value = value === '' ? '' : numberText(Number((Number(value) * scale).toPrecision(12)));
    });
    return make('label', {}, make('span', {}, say(key)), input);
  }

  choice(key, choices, isOption = false) {
    const select = make('select', {}, ...Object.entries(choices).map(([value, text]) => make('option', { value }, text)));
    select.addEventListener('change', () => this.set(key, key === 'alpha' ? Number(select.value) : select.value, isOption));
    this.fields.set(key, (value) => {
      if (![...select.options].some((option) => option.value === String(value))) select.append(make('option', { value: String(value) }, String(value)));
      select.value = String(value);
    });
    return make('label', {}, make('span', {}, say(key)), select);
  }

  set(key, value, isOption) {
    const { job } = this.owner;
    this.owner.edit(isOption ? jobEdits.setOption(job, key, value) : jobEdits.setParameter(job, key, value), `parameter ${key}`);
  }

  show() {
    const { parameters, options } = this.owner.job;
    for (const [key, put] of this.fields) put(options[key] ?? parameters[key] ?? '');
  }
}
