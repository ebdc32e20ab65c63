// What survives a reload, in the browser's own database: nothing leaves the machine.
const storage = {
  open() {
    this.database ??= new Promise((resolve, reject) => {
      const request = indexedDB.open('brenu', 1);
      request.onupgradeneeded = () => request.result.createObjectStore('jobs');
      request.onsuccess = () => resolve(request.result);
      request.onerror = () => reject(request.error);
    });
    return this.database;
  },

  async request(mode, call) {
    const store = (await this.open()).transaction('jobs', mode).objectStore('jobs');
    const request = call(store);
    return new Promise((resolve, reject) => {
      request.onsuccess = () => resolve(request.result);
      request.onerror = () => reject(request.error);
    });
  },

  // What is kept under the name, a job or what the user prefers.  Whether it is kept: the page works
  // without a database, too.
  async save(name, state) {
    try {
      await this.request('readwrite', (store) => store.put(state, name));
    } catch {
      return false;
    }
    return true;
  },
  async load(name) {
    try {
      return await this.request('readonly', (store) => store.get(name));
    } catch {
      return undefined;
    }
  },
};
