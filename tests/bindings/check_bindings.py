#!/usr/bin/env python3
"""Checks that the declarations for C# and Python are those of brenu.h and survey.h.

Functions by name, result and arguments, records by the name, type and place of every field.  No
compiler and no library is needed: a fault here would otherwise be found as garbage in a result."""

import ctypes
import dataclasses
import pathlib
import re
import sys
import types

ROOT = pathlib.Path(__file__).resolve().parents[2]

# What Python has for the types of C; a buffer to write into is a text to ctypes.
C_TYPES = {
    "void": None, "double": ctypes.c_double, "int32_t": ctypes.c_int32,
    "size_t": ctypes.c_size_t, "uint32_t": ctypes.c_uint32, "uint8_t": ctypes.c_uint8, "bool": ctypes.c_bool,
    "char": ctypes.c_char, "AdjustmentContext*": ctypes.c_void_p, "char*": ctypes.c_char_p,
    "char[255]": ctypes.c_char_p,
}  # fmt: skip

# C# as C; a bool that is not marked as one byte has four.
CSHARP_AS_C = [
    (r"\[DllImport\(Library\)\]\s*", ""),
    (r"\[(?:return: )?MarshalAs\(UnmanagedType\.I1\)\]\s*(public (?:static extern )?)bool",
     r"\1byte_bool"),
    (r"\bbool\b", "bool_of_four_bytes"),
    (r"\bbyte_bool\b", "bool"),
    (r"\[MarshalAs\(UnmanagedType\.ByVal\w+, SizeConst = (\d+)\)\]\s*public \S+ (\w+);",
     r"char \2[\1];"),
    (r"\[In, Out\] byte\[\] direction", "char direction[255]"),
    (r"\bbyte\[\] (\w+)", r"char* \1"),
    (r"\bextern IntPtr brenu_", "extern char* brenu_"),
    (r"\bUIntPtr\b", "size_t"),
    (r"(?:ref|out) (\w+) ", r"\1* "),
    (r"\bstring (\w+[,)])", r"char* \1"),
    (r"\bIntPtr name;", "char* name;"),
    (r"\bIntPtr ", "AdjustmentContext* "),
    (r"\b(u?int)\b", r"\g<1>32_t"),
    (r"\bbyte\b", "uint8_t"),
    (r"\[StructLayout\(LayoutKind\.Sequential\)\]\s*public struct (\w+)", r"typedef struct \1"),
    (r"public static extern", "BRENU_API"),
    (r"\bpublic ", ""),
]  # fmt: skip


def as_c(text):
    for pattern, replacement in CSHARP_AS_C:
        text = re.sub(pattern, replacement, text)
    return text


def strip_comments(text):
    return re.sub(r"/\*.*?\*/|//[^\n]*", "", text, flags=re.DOTALL).replace("const ", "")


def split(text):
    return [part for part in map(str.strip, text.split(",")) if part not in ("", "void")]


def functions(text):
    """Name: the result and the types of the arguments, as they stand in C."""
    found = re.findall(r"BRENU_API\s+(\w+\**)\s+(\w+)\(([^)]*)\)", text)
    return {
        name: (result, [re.sub(r"\s+\w+(\[\d+\])?$", r"\1", a) for a in split(arguments)])
        for result, name, arguments in found
    }


def records(text):
    """Name: the name, type and number of elements of every field."""
    found = {}
    for name, body in re.findall(r"typedef struct (\w+)\s*\{(.*?)\}", text, re.DOTALL):
        fields = []
        for kind, names in re.findall(r"(\w+\*?) ([^;]+);", body):
            for field in split(names):
                plain, count = re.match(r"(\w+)(?:\[(\d+)\])?$", field).groups()
                fields.append((plain, kind, int(count or 1)))
        found[name] = fields
    return found


# ---- Python ----


def python_modules():
    """layouts and prototypes of the package, without the library that the package loads."""
    package = types.ModuleType("brenu")
    package.__path__ = [str(ROOT / "python" / "brenu")]
    sys.modules["brenu"] = package
    import brenu.layouts
    import brenu.prototypes
    import brenu.records

    return brenu.layouts, brenu.prototypes, brenu.records


def for_python(kind, layouts):
    """The type of C as ctypes has it."""
    if kind in C_TYPES:
        return C_TYPES[kind]
    if kind.endswith("*"):
        return ctypes.POINTER(for_python(kind[:-1], layouts))
    return getattr(layouts, kind)


def places(record):
    """Name, place and size of every field, and the size of the record."""
    names = [name for name, *_ in record._fields_]
    fields = [(n, getattr(record, n).offset, getattr(record, n).size) for n in names]
    return fields, ctypes.sizeof(record)


def layout(fields, layouts):
    kinds = [(n, for_python(k, layouts), c) for n, k, c in fields]
    kinds = [(n, k * c if c > 1 else k) for n, k, c in kinds]
    return places(type("Record", (ctypes.Structure,), {"_fields_": kinds}))


def plain(kind):
    """Of an argument with a check of its own, the type that it is for C."""
    return ctypes.c_int32 if kind and issubclass(kind, ctypes.c_int32) else kind


# ---- Comparison ----


def differences(what, wanted, found):
    for name in sorted(wanted.keys() | found.keys()):
        if wanted.get(name) != found.get(name):
            yield f"{what}: {name} is {found.get(name)}, in the header {wanted.get(name)}"


def listed(file, names):
    found = (ROOT / "cmake" / file).read_text().split()
    return differences(file, dict.fromkeys(names, "there"), dict.fromkeys(found, "there"))


def main():
    header = (ROOT / "include/brenu/brenu.h").read_text()
    survey = (ROOT / "include/brenu/survey.h").read_text()
    stated = re.findall(r"typedef struct (\w+) \{ +/\* (\d+) bytes", header + survey)
    in_c, records_c = functions(strip_comments(header)), records(strip_comments(header))
    in_survey = functions(strip_comments(survey))
    layouts, prototypes, python_records = python_modules()
    all_records = {**records_c, **records(strip_comments(survey))}
    sizes = {name: layout(fields, layouts) for name, fields in all_records.items()}

    sources = [path.read_text() for path in sorted((ROOT / "bindings/csharp").glob("*.cs"))]
    csharp = as_c(strip_comments("\n".join(sources)))

    wanted = {
        name: [for_python(kind, layouts) for kind in (result, *arguments)]
        for name, (result, arguments) in {**in_c, **in_survey}.items()
    }
    python = {
        name: [plain(kind) for kind in (result, *arguments)]
        for name, (result, arguments) in prototypes.PROTOTYPES.items()
    }
    # Dataclasses have the fields in use in the same order, with words apart.
    fields_c, fields = {}, {}
    for name in records_c:
        fields_c[name] = [f.lower() for f in python_records.layout_fields(getattr(layouts, name))]
        found = dataclasses.fields(getattr(python_records, name))[: len(fields_c[name])]
        fields[name] = [f.name.replace("_", "") for f in found]
    faults = [
        *listed("exports.txt", in_c),
        *listed("survey-exports.txt", in_survey),
        *differences("stated size", {n: str(size) for n, (_, size) in sizes.items()}, dict(stated)),
        *differences("C#", {**in_c, **in_survey}, functions(csharp)),
        *differences("C#", all_records, records(csharp)),
        *differences("Python", wanted, python),
        *differences("Python", sizes, {n: places(getattr(layouts, n)) for n in sizes}),
        *differences("Python", fields_c, fields),
    ]
    codes = re.findall(r"BRENU_(\w+) = ([1-9]\d*)", (ROOT / "include/brenu/findings.h").read_text())
    codes = {number: name.lower().replace("_", "-") for name, number in codes if name != "ERROR"}
    table = dict(re.findall(r"^\| (\d+) \| ([\w-]+) \|", (ROOT / "docs/findings.md").read_text(), re.M))
    faults += differences("docs/findings.md", codes, table)
    print(f"{len(wanted)} functions and {len(sizes)} records compared")
    return "\n".join(faults) or None


sys.exit(main())
