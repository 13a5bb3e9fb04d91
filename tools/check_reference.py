#!/usr/bin/env python3
"""Check the reference text of the list of exports.

Usage: check_reference.py EXPORTS_DIR [--self-test]

Fails when a file does not open with its family's introduction ("' Title: ..." and an empty
line), when an export or record has no reference text (its own, or a "Like cName" line
naming a documented export above it in the same file), when the first sentence does not end,
when an argument or field is not described or is described twice or out of order, when a
Function has no Returns: section, or when the text names an export that is not in the list
(exports/README.md, "Reference text", gives the form).

--self-test also runs the checks on a small list damaged in each of those ways and fails
if any damage goes unnoticed.
"""
import os
import sys
import tempfile

import gen_exports
import reference_text

GOOD = """' Samples: a family for the self-test.

' Gives the sum of the elements.
' Arr: the array.
' Returns: the sum; 0 for an empty array.
Declare Function cSumI (Arr() As Integer) As Double
' Like cSumI, for Long arrays.
Declare Function cSumL (Arr() As Long) As Double
' Describes a span of text.
' Start: where it starts, from 1.
' Length: how many characters.
Type Span
    Start As Long
    Length As Long
End Type
' Clears a span; see cSumI for sums.
' S: the span.
Declare Sub cClearSpan (S As Span)
"""

DAMAGES = [
    ("an export without text", "' Clears a span; see cSumI for sums.\n' S: the span.\n", ""),
    ("a record without text", "' Describes a span of text.\n", ""),
    ("an argument not described", "' S: the span.\n", ""),
    ("a field not described", "' Length: how many characters.\n", ""),
    ("no Returns section", "' Returns: the sum; 0 for an empty array.\n", ""),
    ("a Like naming no export above", "Like cSumI,", "Like cSumX,"),
    ("an unknown export named", "see cSumI for sums", "see cSumQ for sums"),
    ("a first sentence without a full stop", "Gives the sum of the elements.", "Gives the sum of the elements"),
    ("an argument described twice", "' Arr: the array.\n", "' Arr: the array.\n' Arr: again.\n"),
    ("a file without its introduction", "' Samples: a family for the self-test.\n\n", ""),
]


def problems_of(directory):
    decls, records, record_docs, intros = gen_exports.read_list(directory)
    problems = []
    # Each file opens with its family's introduction: "' Title: what it does."
    for fname, intro in sorted(intros.items()):
        if not intro or ":" not in intro[0]:
            problems.append(f"{fname}:1: no introduction \"' Title: ...\" followed by an empty line")
    reference_text.build(decls, records, record_docs, problems)
    return decls, records, problems


def self_test():
    failed = []
    with tempfile.TemporaryDirectory() as tmp:
        path = os.path.join(tmp, "samples.bas")

        def run(text):
            with open(path, "w", encoding="utf-8") as f:
                f.write(text)
            return problems_of(tmp)[2]

        if run(GOOD):
            failed.append(f"the good sample is refused: {run(GOOD)}")
        for what, old, new in DAMAGES:
            if old not in GOOD:
                failed.append(f"damage '{what}' does not apply")
            elif not run(GOOD.replace(old, new, 1)):
                failed.append(f"damage not caught: {what}")
    return failed


def main(argv):
    args = [a for a in argv[1:] if not a.startswith("--")]
    if len(args) != 1:
        print(__doc__, file=sys.stderr)
        return 2
    try:
        decls, records, problems = problems_of(args[0])
    except gen_exports.ListError as e:
        print(f"check_reference: {e}")
        return 1
    for p in problems:
        print(p)
    print(f"{len(decls)} exports and {len(records)} records, {len(problems)} problems in the reference text")
    failed = bool(problems)
    if "--self-test" in argv:
        for p in self_test():
            print(f"self-test: {p}")
            failed = True
        if not failed:
            print("self-test: every damage caught")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
