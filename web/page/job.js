// A job as the page holds it: what a project file holds, as text fields, so that a number stays as it
// was typed.  Jobs never change; an edit makes a new one that shares the rest.
//   { name, source, parameters: {MO, ...}, points: [{name, type, x, y, h}],
//     observations: [{from, to, direction, distance, dh, azimuth, out}], options, reading }
// `source` is the text that the rows were read from, null after an edit of the rows; `reading` says how,
// where it is a field book: {control, part, steps}.  `out` lists the values of a pair that are left out.
const parameterKeys = ['MO', 'MS', 'MR', 'Lvl1', 'Lvl2', 'Lvl1Limit', 'Lvl2Limit', 'Limit', 'format'];
const pointKeys = ['name', 'type', 'x', 'y', 'h'];
const valueKeys = ['direction', 'distance', 'dh', 'azimuth'];
const observationKeys = ['from', 'to', ...valueKeys];
const kindOfKey = { direction: 'direction', distance: 'distance', dh: 'height_difference', azimuth: 'azimuth' };
const defaultOptions = { rules: 'textbook', levelSigma: 0.001, alpha: 0 };

// A number as the shortest text without exponent.
function numberText(value) {
  if (value === null) return '';
  const text = String(value);
  return text.includes('e') ? value.toFixed(20).replace(/0+$/, '') : text;
}

function rowsOfEngine(rows) {
  const record = (keys, row) => Object.fromEntries(keys.map((key, i) => [key, row[i]]));
  return {
    parameters: Object.fromEntries(parameterKeys.map((key) => [key, numberText(rows.parameters[key])])),
    points: rows.points.map(([name, type, ...values]) =>
      record(pointKeys, [name, String(type).padStart(2, '0'), ...values.map(numberText)])),
    observations: rows.observations.map(([from, to, ...values]) =>
      ({ ...record(observationKeys, [from, to, ...values.map(numberText)]), out: [] })),
  };
}

const emptyJob = () => ({
  name: '', source: '', reading: {}, parameters: {}, points: [], observations: [], options: { ...defaultOptions },
});

function usedValues(row) {
  return valueKeys.map((key) => (row.out.includes(key) ? '' : row[key].trim()));
}

// The project file of a job, and what stands on its lines: `rowOfLine` gives {table, index},
// `lineOf[table][index]` the line of a row, counted from 1.
function projectText(job) {
  const lines = [];
  const rowOfLine = new Map();
  const lineOf = { points: [], observations: [] };
  const add = (table, index, text) => {
    lines.push(text);
    lineOf[table][index] = lines.length;
    rowOfLine.set(lines.length, { table, index });
  };
  lines.push('[PARAM]');
  for (const key of parameterKeys) {
    if ((job.parameters[key] ?? '') !== '') lines.push(`${key}:${job.parameters[key]}`);
  }
  lines.push('', '[PT]');
  job.points.forEach((point, i) => add('points', i, pointKeys.map((key) => point[key]).join(',')));
  lines.push('', '[OBS]');
  job.observations.forEach((row, i) => {
    const values = usedValues(row);
    if (values.some((value) => value !== '')) add('observations', i, [row.from, row.to, ...values].join(','));
  });
  return { text: `${lines.join('\n')}\n`, rowOfLine, lineOf };
}

// The text of a job for the engine, which is the file itself until a row was edited.
function textOfJob(job) {
  return job.source ?? projectText(job).text;
}

function withRow(rows, index, change) {
  const changed = [...rows];
  changed[index] = { ...rows[index], ...change };
  return changed;
}

const edited = (job, change) => ({ ...job, source: null, ...change });

const jobEdits = {
  set(job, table, index, key, value) {
    if (table === 'points' && key === 'name') return this.rename(job, index, value);
    return edited(job, { [table]: withRow(job[table], index, { [key]: value }) });
  },
  // A point keeps its observations.
  rename(job, index, name) {
    const old = job.points[index].name;
    const others = job.points.some((point, i) => i !== index && point.name === old);
    const points = withRow(job.points, index, { name });
    if (others || old === '') return edited(job, { points });
    const other = (end) => (end === old ? name : end);
    const observations = job.observations.map((row) =>
      (row.from === old || row.to === old ? { ...row, from: other(row.from), to: other(row.to) } : row));
    return edited(job, { points, observations });
  },
  // Leaves values of a pair out, or takes them back.
  exclude(job, index, keys, isOut) {
    const row = job.observations[index];
    const kept = row.out.filter((key) => !keys.includes(key));
    return edited(job, { observations: withRow(job.observations, index, { out: isOut ? [...kept, ...keys] : kept }) });
  },
  add(job, table) {
    const keys = table === 'points' ? pointKeys : observationKeys;
    const row = Object.fromEntries(keys.map((key) => [key, '']));
    if (table === 'points') row.type = '00';
    else row.out = [];
    return edited(job, { [table]: [...job[table], row] });
  },
  remove(job, table, index) {
    return edited(job, { [table]: job[table].filter((row, i) => i !== index) });
  },
  setParameter(job, key, value) {
    return edited(job, { parameters: { ...job.parameters, [key]: value } });
  },
  setOption(job, key, value) {
    return { ...job, options: { ...job.options, [key]: value } };
  },
};
