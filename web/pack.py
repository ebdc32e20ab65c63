#!/usr/bin/env python3
"""Packs engine, scripts, styles and examples into one page: pack.py ENGINE VERSION OUTPUT, where
ENGINE.js and ENGINE.wasm are what the compiler made."""
import base64
import gzip
import json
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent
# In the order in which they stand in the page: each knows only those before it.
SCRIPTS = ["words", "theme", "dom", "job", "history", "storage", "engine", "grid", "source", "parameters",
           "compare", "outputs", "result", "steps", "book", "frame",
           "app"]
# What the page offers to start from, with the words for it.
EXAMPLES = ["combined", "levelling", "triangulation", "trilateration", "closed-traverse",
            "connecting-traverse", "unoriented-traverse", "station-file", "blunders"]


def read(path):
    return path.read_text(encoding="utf-8")


def script_text(text):
    """As it may stand in a script element."""
    return text.replace("</script", "<\\/script").replace("<!--", "<\\!--")


def data_text(value):
    return json.dumps(value, ensure_ascii=False).replace("<", "\\u003c")


def main(engine, version, output):
    wasm = pathlib.Path(engine + ".wasm").read_bytes()
    report = ROOT / "src/report/page"
    parts = {
        "STYLE": read(report / "page.css") + read(HERE / "page/app.css"),
        "WORKER": script_text(read(pathlib.Path(engine + ".js")) + read(HERE / "page/worker.js")),
        "WASM": base64.b64encode(gzip.compress(wasm, 9, mtime=0)).decode("ascii"),
        "EXAMPLES": data_text({name: read(ROOT / f"examples/{name}.txt") for name in EXAMPLES}),
        "SCRIPT": script_text("".join([read(report / "page.js"),
                                       *(read(HERE / f"page/{name}.js") for name in SCRIPTS)])),
        "VERSION": version,
    }
    page = read(HERE / "page/index.html")
    for name, text in parts.items():
        page = page.replace(f"@{name}@", text)
    pathlib.Path(output).write_text(page, encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
