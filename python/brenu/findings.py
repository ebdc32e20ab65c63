"""What there is to say about a file, a network or a computation, and the exceptions made of it."""

from __future__ import annotations

from ctypes import byref, c_double, create_string_buffer
from dataclasses import dataclass
from enum import IntEnum
from typing import Callable

from . import layouts
from .library import C
from .records import Coding

_OUT_OF_MEMORY = 1


class Severity(IntEnum):
    """How much a finding weighs."""

    NOTE = 0  #: worth knowing
    WARNING = 1  #: a doubt: it was computed, but look at it
    ERROR = 2  #: not read, not computed, or the result means nothing


@dataclass
class Finding:
    """findings.h of the library lists the codes, with the names and values that go with each."""

    code: int
    id: str  #: the code as a word, such as "heights-unreached"
    severity: Severity
    line: int  #: of the file, counted from 1; 0 for none
    sentence: str  #: where, what is wrong, what to do; English
    excerpt: str  #: what stands in the file: the line or the field; empty for none
    names: list[str]  #: of points mostly
    values: list[float]


class BrenuError(Exception):
    """Something failed; str() is the sentence that says why."""

    def __init__(self, finding: Finding):
        super().__init__(finding)
        self.finding = finding  #: the cause

    def __str__(self) -> str:
        return self.finding.sentence

    @property
    def code(self) -> int:
        """The number of the cause, a brenu_code of findings.h."""
        return self.finding.code

    @property
    def id(self) -> str:
        """The cause as a word, such as "heights-unreached"."""
        return self.finding.id

    @property
    def sentence(self) -> str:
        """Where, what is wrong, what to do."""
        return self.finding.sentence

    @property
    def names(self) -> list[str]:
        """Of the points that it is about."""
        return self.finding.names

    @property
    def line(self) -> int:
        """The line of the file at fault, counted from 1; 0 for none."""
        return self.finding.line


class CallError(BrenuError):
    """An argument does not fit: a name that is taken, an index without a point..."""


class FileError(BrenuError):
    """A file cannot be opened, read or written, or is none of the two kinds."""


class DataError(BrenuError):
    """A line of a file, or a value, cannot be used."""


class ComputationError(BrenuError):
    """The network cannot be computed, or its result means nothing."""


def _kind_of(finding: Finding) -> type[BrenuError]:
    if finding.code < 100:
        return DataError if finding.line else CallError
    if finding.code < 120:
        return FileError
    return DataError if finding.code < 400 else ComputationError


def _text(copy: Callable[..., int], text: Coding, *arguments: object) -> str:
    """From a function that copies text to a place with room."""
    room = copy(*arguments, None, 0) + 1
    buffer = create_string_buffer(max(room, 1))
    copy(*arguments, buffer, len(buffer))
    return text.decode(buffer.value)


def _finding(context: int, index: int, raw: layouts.brenu_finding, text: Coding) -> Finding:
    values = []
    for number in range(raw.valueCount):
        value = c_double()
        C.brenu_finding_value(context, index, number, byref(value))
        values.append(value.value)
    return Finding(
        raw.code,
        C.brenu_code_id(raw.code).decode(),
        Severity(raw.severity),
        raw.line,
        _text(C.brenu_finding_text, text, context, index),
        _text(C.brenu_finding_excerpt, text, context, index),
        [_text(C.brenu_finding_name, text, context, index, n) for n in range(raw.nameCount)],
        values,
    )


def findings_of(context: int, text: Coding) -> list[Finding]:
    """Of the last call that changes, computes, reads or writes."""
    raw = layouts.brenu_finding()
    found = []
    for index in range(C.brenu_finding_count(context)):
        C.brenu_get_finding(context, index, byref(raw))
        found.append(_finding(context, index, raw, text))
    return found


def raise_cause(context: int, text: Coding) -> None:
    """Raises the first error among the findings, if there is one."""
    raw = layouts.brenu_finding()
    for index in range(C.brenu_finding_count(context)):
        C.brenu_get_finding(context, index, byref(raw))
        if raw.severity != Severity.ERROR:
            continue
        cause = _finding(context, index, raw, text)
        if cause.code == _OUT_OF_MEMORY:
            raise MemoryError(cause.sentence)
        raise _kind_of(cause)(cause)
