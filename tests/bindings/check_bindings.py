#!/usr/bin/env python3
"""Checks that the declarations for C# and Python are those of brenu.h.

Functions by name, result and arguments, records by the name, type and place of every field.  No
compiler and no library is needed: a fault here would otherwise be found as garbage in a result."""

import ctypes
import pathlib
import re
import sys
import types

ROOT = pathlib.Path(__file__).resolve().parents[2]

SCALARS = {
    "double": "double", "int32_t": "int32", "uint32_t": "uint32", "uint8_t": "uint8",
    "int": "int32", "uint": "uint32", "byte": "uint8", "bool": "bool", "char": "char",
    "void": "void", "IntPtr": "pointer", "string": "text",
}
C_TYPES = {
    "double": ctypes.c_double, "int32": ctypes.c_int32, "uint32": ctypes.c_uint32,
    "bool": ctypes.c_bool, "char": ctypes.c_char, "pointer": ctypes.c_void_p,
}


def strip_comments(text):
    return re.sub(r"/\*.*?\*/|//[^\n]*", "", text, flags=re.DOTALL)


# ---- brenu.h ----


def header_type(text):
    text = text.replace("const ", "").replace(" ", "")
    if text == "AdjustmentContext*":
        return "pointer"
    if text == "char*":
        return "text"
    if text.endswith("*"):
        return "&" + header_type(text[:-1])
    return SCALARS.get(text, text)


def header_argument(text):
    text = " ".join(text.split())
    if text == "char direction[255]":
        return "buffer"
    return header_type(re.match(r"(.*?)\w+$", text).group(1))


def split_arguments(text):
    return [a for a in map(str.strip, text.split(",")) if a not in ("", "void")]


def header_functions(text):
    found = re.findall(r"BRENU_API\s+(\w+\**)\s+(\w+)\(([^)]*)\)", text)
    return {
        name: (header_type(result), [header_argument(a) for a in split_arguments(arguments)])
        for result, name, arguments in found
    }


def header_records(text):
    records = {}
    for name, body in re.findall(r"typedef struct (\w+) \{(.*?)\}", text, re.DOTALL):
        fields = []
        for kind, names in re.findall(r"((?:const )?\w+\*?) ([^;]+);", body):
            for field in split_arguments(names):
                plain, count = re.match(r"(\w+)(?:\[(\d+)\])?$", field).groups()
                kind_name = "pointer" if kind.endswith("*") else SCALARS[kind]
                fields.append((plain, kind_name, int(count or 1)))
        records[name] = fields
    return records


# ---- C# ----


def csharp_argument(text):
    if text == "[In, Out] byte[] direction":
        return "buffer"
    mode, kind = re.match(r"(?:(ref|out) )?(\w+) \w+$", text).groups()
    return ("&" if mode else "") + SCALARS.get(kind, kind)


def csharp_functions(text):
    found = re.findall(
        r"\[DllImport\(Library\)\]\s*(\[return: MarshalAs\(UnmanagedType.I1\)\]\s*)?"
        r"public static extern (\w+) (\w+)\(([^)]*)\);",
        text,
    )
    functions = {}
    for one_byte, result, name, arguments in found:
        arguments = arguments.replace("[In, Out]", "[In;Out]")
        parts = [" ".join(a.split()).replace(";", ", ") for a in split_arguments(arguments)]
        kind = SCALARS.get(result, result)
        if (kind == "bool") != bool(one_byte):
            kind += " of another width"
        functions[name] = (kind, [csharp_argument(a) for a in parts])
    return functions


def csharp_field(attribute, kind, name):
    count = re.search(r"SizeConst = (\d+)", attribute)
    if kind in ("string", "byte[]"):
        return (name, "char", int(count.group(1)))
    if kind == "bool" and "UnmanagedType.I1" not in attribute:
        return (name, "bool of another width", 1)
    return (name, SCALARS[kind], 1)


def csharp_records(text):
    records = {}
    for name, body in re.findall(
        r"\[StructLayout\(LayoutKind.Sequential\)\]\s*public struct (\w+)\s*\{(.*?)\}",
        text,
        re.DOTALL,
    ):
        fields = re.findall(r"(\[MarshalAs\([^\]]*\)\])?\s*public ([\w\[\]]+) (\w+);", body)
        records[name] = [csharp_field(*field) for field in fields]
    return records


# ---- Python ----


def python_modules():
    """layouts and prototypes of the package, without the library that the package loads."""
    package = types.ModuleType("brenu")
    package.__path__ = [str(ROOT / "python" / "brenu")]
    sys.modules["brenu"] = package
    import brenu.layouts
    import brenu.prototypes

    return brenu.layouts, brenu.prototypes


def python_type(kind):
    names = {
        None: "void", ctypes.c_void_p: "pointer", ctypes.c_char_p: "text",
        ctypes.c_uint8: "uint8", **{c: name for name, c in C_TYPES.items()},
    }
    for known in kind.__mro__ if kind else [None]:
        if known in names:
            return names[known]
    if issubclass(kind, ctypes._Pointer):
        return "&" + python_type(kind._type_)
    return kind.__name__


def python_functions(prototypes, buffers):
    """A buffer to write into is a text to ctypes."""
    functions = {}
    for name, (result, arguments) in prototypes.PROTOTYPES.items():
        kinds = [python_type(kind) for kind in arguments]
        for i in buffers.get(name, []):
            kinds[i] = "buffer" if kinds[i] == "text" else kinds[i]
        functions[name] = (python_type(result), kinds)
    return functions


# ---- Comparison ----


def layout(fields):
    """Name, place and size of every field, and the size of the record."""
    kinds = [(n, C_TYPES[k] * c if c > 1 else C_TYPES[k]) for n, k, c in fields]
    record = type("Record", (ctypes.Structure,), {"_fields_": kinds})
    return places(record)


def places(record):
    names = [name for name, *_ in record._fields_]
    fields = [(n, getattr(record, n).offset, getattr(record, n).size) for n in names]
    return fields, ctypes.sizeof(record)


def differences(what, wanted, found):
    for name in sorted(wanted.keys() | found.keys()):
        if wanted.get(name) != found.get(name):
            yield f"{what}: {name} is {found.get(name)}, in brenu.h {wanted.get(name)}"


def main():
    header = (ROOT / "include/brenu/brenu.h").read_text()
    sizes = dict(re.findall(r"typedef struct (\w+) \{ +/\* (\d+) bytes", header))
    functions = header_functions(strip_comments(header))
    records = header_records(strip_comments(header))
    layouts = {name: layout(fields) for name, fields in records.items()}
    stated = {name: int(size) for name, size in sizes.items()}
    exports = (ROOT / "cmake/exports.txt").read_text().split()
    buffers = {n: [i for i, a in enumerate(f[1]) if a == "buffer"] for n, f in functions.items()}

    sources = [path.read_text() for path in sorted((ROOT / "bindings/csharp").glob("*.cs"))]
    csharp = strip_comments("\n".join(sources))
    layouts_py, prototypes_py = python_modules()
    faults = [
        *differences("exports.txt", dict.fromkeys(functions), dict.fromkeys(exports)),
        *differences("stated size", {n: size for n, (_, size) in layouts.items()}, stated),
        *differences("C#", functions, csharp_functions(csharp)),
        *differences("C#", records, csharp_records(csharp)),
        *differences("Python", functions, python_functions(prototypes_py, buffers)),
        *differences(
            "Python", layouts, {name: places(getattr(layouts_py, name)) for name in layouts}
        ),
    ]
    print(f"{len(functions)} functions and {len(records)} records compared")
    return "\n".join(faults) or None


sys.exit(main())
