// The engine seen from the page: runs the newest job in the worker, one at a time.
class Engine {
  // `hear` is called with (message, job) for what the worker has to say.
  constructor(hear) {
    this.hear = hear;
    this.next = null;
    this.busy = null;
    this.waiting = new Map();
    this.number = 0;
    const source = byId('worker-source').textContent;
    this.address = URL.createObjectURL(new Blob([source], { type: 'text/javascript' }));
    this.module = this.compile();
  }

  async compile() {
    const packed = Uint8Array.from(atob(byId('engine-bytes').textContent), (c) => c.charCodeAt(0));
    const stream = new Blob([packed]).stream().pipeThrough(new DecompressionStream('gzip'));
    return WebAssembly.compile(await new Response(stream).arrayBuffer());
  }

  async start() {
    const worker = new Worker(this.address);
    this.worker = worker;
    this.isReady = false;
    this.first = undefined;  // what the worker keeps for comparisons
    worker.onmessage = (event) => { if (worker === this.worker) this.receive(event.data); };
    worker.onerror = (event) => { if (worker === this.worker) this.receive({ id: this.busy?.id, failed: event.message }); };
    worker.postMessage({ module: await this.module });
  }

  // job: {text, options, language, withRows, first}
  run(job) {
    this.next = { ...job, id: ++this.number };
    const tooLong = 1500;
    if (this.busy !== null && performance.now() - this.busy.began > tooLong) this.stop();
    else this.pump();
  }

  // Ends what runs; the newest job begins anew, unless it is the one that runs.
  stop() {
    this.worker.terminate();
    this.busy = null;
    for (const resolve of this.waiting.values()) resolve('');
    this.waiting.clear();
    this.start();
  }

  pump() {
    if (!this.isReady || this.busy !== null || this.next === null) return;
    this.busy = { ...this.next, began: performance.now() };
    this.next = null;
    const { id, text, options, language, withRows, first } = this.busy;
    const message = { id, text, options, language, withRows, hasFirst: first !== null };
    if (first !== this.first) message.first = first;
    this.first = first;
    this.worker.postMessage(message);
  }

  // A rendering of the last adjustment.
  output(kind) {
    const id = ++this.number;
    this.worker.postMessage({ id, output: kind });
    return new Promise((resolve) => { this.waiting.set(id, resolve); });
  }

  receive(message) {
    if (message.ready) {
      this.isReady = true;
      this.pump();
      return;
    }
    const resolve = this.waiting.get(message.id);
    if (resolve !== undefined) {
      if (message.text !== undefined || message.failed !== undefined) resolve(message.text ?? '');
      if (message.done || message.failed) this.waiting.delete(message.id);
      return;
    }
    const job = this.busy;
    if (job === null || (message.id !== undefined && message.id !== job.id)) return;
    if (message.done || message.failed !== undefined) this.busy = null;
    this.hear(message, job);
    if (message.failed !== undefined) this.stop();
    this.pump();
  }
}
