// The steps of the reduction of a field book as a form.  What stands as usual is absent from the steps.
class StepsForm {
  // `take` is called with (steps, key of what was changed).
  constructor(take) {
    this.take = take;
    this.steps = {};
    this.fields = new Map();
    const group = (title, ...fields) => make('fieldset', {}, make('legend', {}, say(title)), ...fields);
    const positive = (value) => value > 0;
    const temperature = (value) => value > -273.15;
    this.count = make('span');
    this.element = make('details', { id: 'steps' }, make('summary', {}, `${say('steps')} `, this.count),
      make('form', { className: 'parameters', onsubmit: (event) => event.preventDefault() },
        group('means', ...['averageFaces', 'averageSets', 'joinSetups', 'centre'].map((key) => this.check(key, true)), this.codes()),
        group('corrections', this.number('constant', '0'), this.number('scale', '0'), this.number('refraction', '–'),
          this.check('trigonometricHeights', false)),
        group('air', this.number('pressure', '1013.25', positive), this.number('temperature', '15', temperature), this.number('humidity', '0'),
          this.number('wavelength', '0.85', positive)),
        group('assumedAir', this.number('assumedPressure', '1013.25', positive), this.number('assumedTemperature', '15', temperature),
          this.number('assumedHumidity', '0')),
        group('projection', this.number('ellipsoid', '–'), this.number('projectionScale', '1', positive), this.number('projectionEasting', '–'))));
  }

  check(key, usual) {
    const box = make('input', { type: 'checkbox' });
    box.dataset.step = key;
    box.addEventListener('change', () => this.set(key, box.checked === usual ? undefined : box.checked));
    this.fields.set(key, (value) => { box.checked = value ?? usual; });
    return make('label', {}, make('span', {}, say(key)), box);
  }

  // Empty for a step that is not taken, or for what is usual.
  number(key, usual, isPossible = () => true) {
    const parse = (text) => (text === '' ? undefined : Number(text));
    const isValid = (value) => value === undefined || (Number.isFinite(value) && isPossible(value));
    return this.text(key, usual, { parse, isValid, textOf: numberText });
  }

  codes() {
    const parse = (text) => (text === '' ? undefined : text.split(/[\s,，]+/).filter((code) => code !== ''));
    return this.text('stationCodes', '2, 21', { parse, isValid: () => true, textOf: (codes) => codes.join(', ') });
  }

  text(key, usual, { parse, isValid, textOf }) {
    const input = make('input', { placeholder: usual, inputMode: 'decimal', autocomplete: 'off' });
    input.dataset.step = key;
    const textOfStep = (value) => (value === undefined ? '' : textOf(value));
    let shown = '';  // stays below what is typed, be it wrong
    input.addEventListener('input', () => {
      const value = parse(input.value.trim());
      input.setAttribute('aria-invalid', !isValid(value));
      if (!isValid(value)) return;
      shown = textOfStep(value);
      this.set(key, value);
    });
    this.fields.set(key, (value) => {
      if (textOfStep(value) === shown) return;
      shown = textOfStep(value);
      input.value = shown;
      input.setAttribute('aria-invalid', false);
    });
    return make('label', {}, make('span', {}, say(key)), input);
  }

  set(key, value) {
    const steps = { ...this.steps, [key]: value };
    if (value === undefined) delete steps[key];
    this.steps = steps;
    this.take(steps, key);
  }

  show(steps) {
    this.steps = steps;
    for (const [key, put] of this.fields) put(steps[key]);
    const count = Object.keys(steps).length;
    this.count.textContent = count === 0 ? '' : say('stepsChanged')(count);
  }
}
