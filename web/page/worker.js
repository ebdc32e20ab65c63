'use strict';
// The engine in its worker.  Messages: {module} once, then jobs {id, text, options, language, first}
// and {id, output}; answers carry the id of their job.
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

const open = (text) => JSON.parse(textOf(withText(text, (pointer, size) => engine._engine_open(pointer, size))));
const adjust = (options) => JSON.parse(textOf(withText(JSON.stringify(options), engine._engine_adjust)));
const output = (kind) => textOf(withText(kind, engine._engine_output));

// The first of two variants, for the comparison.
function keep(first) {
  if (first === null || !open(first.text).ok) return;
  adjust({ ...first.options, thorough: false });
  engine._engine_keep();
}

function run(job) {
  withText(job.language, engine._engine_language);
  if (job.first !== undefined) keep(job.first);
  const opened = open(job.text);
  const rows = opened.ok && job.withRows ? JSON.parse(textOf(engine._engine_rows())) : null;
  postMessage({ id: job.id, opened, rows });
  if (!opened.ok) return;
  postMessage({ id: job.id, adjusted: adjust(job.options) });
  const compared = job.hasFirst ? textOf(engine._engine_compare()) : '';
  postMessage({ id: job.id, body: output('body'), compared: compared === '' ? null : JSON.parse(compared) });
}

onmessage = async (event) => {
  const job = event.data;
  if (job.module !== undefined) {
    engine = await brenuEngine({
      tell: (stage, round) => postMessage({ stage, round }),
      instantiateWasm: (imports, done) => {
        WebAssembly.instantiate(job.module, imports).then((instance) => done(instance));
        return {};
      },
    });
    postMessage({ ready: true });
    return;
  }
  try {
    if (job.output !== undefined) postMessage({ id: job.id, text: output(job.output) });
    else run(job);
    postMessage({ id: job.id, done: true });
  } catch (error) {
    postMessage({ id: job.id, failed: String(error) });
  }
};
