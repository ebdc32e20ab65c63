'use strict';
// The engine in its worker.  Messages: {module} once, then jobs {id, text, reading, options, language, withRows,
// pause, first} and {id, output}; answers carry the id of their job.  `first`, the first of two variants,
// comes with a job when it is another one; for `pause` milliseconds the body waits for newer jobs.
let engine;

function textOf(pointer) {
  return engine.UTF8ToString(pointer);
}

// Calls the function with the text in the memory of the engine.
function withText(text, call) {
  const bytes = new TextEncoder().encode(text);
  const pointer = engine._malloc(bytes.length + 1);
  engine.HEAPU8.set(bytes, pointer);
  engine.HEAPU8[pointer + bytes.length] = 0;
  try {
    return call(pointer, bytes.length);
  } finally {
    engine._free(pointer);
  }
}

const open = (text, options) => JSON.parse(textOf(withText(text, (pointer, size) =>
  withText(JSON.stringify(options ?? {}), (given) => engine._engine_open(pointer, size, given)))));
const adjust = (options) => JSON.parse(textOf(withText(JSON.stringify(options), engine._engine_adjust)));
const output = (kind) => textOf(withText(kind, engine._engine_output));

// The body of the report, and apart from it the rows that its tables do not show at first: parsing them
// would stop the page.
function bodyParts() {
  const further = {};
  const body = output('body').replace(/<noscript id="more-([^"]*)">([^]*?)<\/noscript>/g, (all, section, rows) => {
    further[section] = rows;
    return '';
  });
  return { body, further };
}

// What is to be done next, and the first of two variants as it was sent last.
let pending = null;
let isRunning = false;
let first = null;
let isFirstKept = true;

function keepFirst() {
  isFirstKept = true;
  if (first === null || !open(first.text, first.reading).ok) return;
  adjust({ ...first.options, thorough: false });
  engine._engine_keep();
}

// Lets messages in for that many milliseconds; whether a newer job is among them.
async function isOutdated(pause = 0) {
  await new Promise((resolve) => { setTimeout(resolve, pause); });
  return pending !== null;
}

async function run(job) {
  withText(job.language, engine._engine_language);
  if (!isFirstKept) keepFirst();
  const opened = open(job.text, job.reading);
  const rows = opened.ok && job.withRows ? JSON.parse(textOf(engine._engine_rows())) : null;
  postMessage({ id: job.id, opened, rows });
  if (!opened.ok || await isOutdated()) return;
  postMessage({ id: job.id, adjusted: adjust(job.options) });
  if (await isOutdated(job.pause)) return;
  const compared = first === null ? '' : textOf(engine._engine_compare());
  postMessage({ id: job.id, ...bodyParts(), misfits: output('misfits'), compared: compared === '' ? null : JSON.parse(compared) });
}

// One job after the other; of those that wait only the newest.
async function runAll() {
  isRunning = true;
  while (pending !== null) {
    const job = pending;
    pending = null;
    try {
      await run(job);
      postMessage({ id: job.id, done: true });
    } catch (error) {
      postMessage({ id: job.id, failed: String(error) });
    }
  }
  isRunning = false;
}

async function start(module) {
  engine = await brenuEngine({
    tell: (stage, round) => postMessage({ stage, round }),
    instantiateWasm: (imports, done) => {
      WebAssembly.instantiate(module, imports).then((instance) => done(instance));
      return {};
    },
  });
  postMessage({ ready: true });
}

onmessage = ({ data }) => {
  if (data.module !== undefined) {
    start(data.module);
  } else if (data.output !== undefined) {
    postMessage({ id: data.id, text: output(data.output) });
  } else {
    if (data.first !== undefined) {
      first = data.first;
      isFirstKept = false;
    }
    pending = data;
    if (!isRunning) runAll();
  }
};
