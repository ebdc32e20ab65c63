// The engine seen from the page: hands jobs to the worker, where the newest counts.
class Engine {
  // `hear` is called with (message, job) for what the worker has to say.
  constructor(hear) {
    this.hear = hear;
    this.waiting = new Map();  // answers of renderings
    this.number = 0;
    const source = byId('worker-source').textContent;
    this.address = URL.createObjectURL(new Blob([source], { type: 'text/javascript' }));
    this.module = this.compile();
    this.start();
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
    this.job = null;         // the newest one, until it is done
    this.sentFirst = null;   // the first variant that the worker knows
    worker.onmessage = (event) => { if (worker === this.worker) this.receive(event.data); };
    worker.onerror = (event) => { if (worker === this.worker) this.receive({ id: this.job?.id, failed: event.message }); };
    worker.postMessage({ module: await this.module });
  }

  // job: {text, reading, options, language, withRows, pause, first} and what else the page wants to see again.
  run(job) {
    const tooLong = 1500;
    if (this.job !== null && performance.now() - this.job.began > tooLong) this.stop();
    this.job = { ...job, id: ++this.number, began: performance.now() };
    if (this.isReady) this.send();
  }

  send() {
    const { id, text, reading, options, language, withRows, pause, first } = this.job;
    const message = { id, text, reading, options, language, withRows, pause };
    if (first !== this.sentFirst) message.first = first;
    this.sentFirst = first;
    this.job.began = performance.now();
    this.worker.postMessage(message);
  }

  // Ends what runs.
  stop() {
    this.worker.terminate();
    for (const resolve of this.waiting.values()) resolve('');
    this.waiting.clear();
    this.start();
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
      if (this.job !== null) this.send();
    } else if (message.text !== undefined) {
      this.waiting.get(message.id)?.(message.text);
      this.waiting.delete(message.id);
    } else if (this.job !== null && (message.id === undefined || message.id === this.job.id)) {
      const { job } = this;
      if (message.done || message.failed !== undefined) this.job = null;
      this.hear(message, job);
      if (message.failed !== undefined) this.stop();
    }
  }
}
