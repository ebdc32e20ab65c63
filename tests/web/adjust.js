'use strict';
// The reports of files by the engine of the page, as a JSON array: adjust.js ENGINE_FOLDER OPTIONS FILE...
const fs = require('fs');
const path = require('path');

const [folder, options, ...files] = process.argv.slice(2);
const load = require(path.resolve(folder, 'engine.js'));

async function main() {
  const engine = await load({ wasmBinary: fs.readFileSync(path.join(folder, 'engine.wasm')) });
  const call = (text, work) => {
    const bytes = Buffer.from(text);
    const pointer = engine._malloc(bytes.length + 1);
    engine.HEAPU8.set(bytes, pointer);
    engine.HEAPU8[pointer + bytes.length] = 0;
    const answer = work(pointer, bytes.length);
    engine._free(pointer);
    return answer;
  };
  const reports = files.map((file) => {
    call(fs.readFileSync(file), (text, size) => call('{}', (none) => engine._engine_open(text, size, none)));
    call(JSON.stringify({ ...JSON.parse(options), file }), (pointer) => engine._engine_adjust(pointer));
    return JSON.parse(engine.UTF8ToString(call('json', (pointer) => engine._engine_output(pointer))));
  });
  process.stdout.write(JSON.stringify(reports));
}
main();
