// Making elements.
function make(name, attributes = {}, ...children) {
  const made = document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) {
    if (key.startsWith('on')) made.addEventListener(key.slice(2), value);
    else if (key in made && key !== 'list') made[key] = value;
    else made.setAttribute(key, value);
  }
  made.append(...children.filter((child) => child !== null));
  return made;
}

// A button with a sign on it and a name for those who do not see it.
function iconButton(sign, name, onclick) {
  return make('button', { type: 'button', title: name, 'aria-label': name, onclick }, sign);
}

const byId = (id) => document.getElementById(id);

// Calls `work` when nothing more has come for that many milliseconds.
function debounced(delay, work) {
  let timer = 0;
  return (...values) => {
    clearTimeout(timer);
    timer = setTimeout(() => work(...values), delay);
  };
}

// Asks a question in a dialog; the key of the answer, '' when it was closed.
function ask(question, answers) {
  const dialog = byId('ask');
  const buttons = Object.entries(answers).map(([key, text]) =>
    make('button', { type: 'submit', value: key }, text));
  dialog.replaceChildren(make('form', { method: 'dialog' }, make('p', {}, question),
    make('div', { className: 'tools' }, ...buttons)));
  dialog.returnValue = '';
  dialog.showModal();
  return new Promise((resolve) => {
    dialog.addEventListener('close', () => resolve(dialog.returnValue), { once: true });
  });
}

// The text of a file, in UTF-16 by its mark, in UTF-8, or else in GBK.
async function textOfFile(file) {
  const bytes = await file.arrayBuffer();
  const mark = new Uint8Array(bytes.slice(0, 2)).join();
  if (mark === '255,254') return new TextDecoder('utf-16le').decode(bytes);
  if (mark === '254,255') return new TextDecoder('utf-16be').decode(bytes);
  try {
    return new TextDecoder('utf-8', { fatal: true }).decode(bytes);
  } catch {
    return new TextDecoder('gbk').decode(bytes);
  }
}

// Gives the text to the user as a file.
function download(name, text, type = 'text/plain') {
  const address = URL.createObjectURL(new Blob([text], { type: `${type};charset=utf-8` }));
  make('a', { href: address, download: name }).click();
  setTimeout(() => URL.revokeObjectURL(address), 10000);
}
