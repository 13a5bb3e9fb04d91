"""The reference text of the list of exports: the comment lines above each Declare and Type.

exports/README.md ("Reference text") describes the form. This module reads the comment
blocks that tools/gen_exports.py collects, turns each into an Entry (summary, description,
arguments, result, note, example), joins the type variants written as "Like cName, ..." to
the entry they follow, and reports every place where the text is missing or does not fit
its Declare. The declaration modules, the HTML reference and the checker all read it here.
"""
import re

SECTIONS = ("Returns", "Note", "Example")
SECTION = re.compile(r"^(\w+):\s*(.*)$")
LIKE = re.compile(r"^Like\s+(c\w+)\b[,.]?\s*(.*?)\s*$")
EXPORT_NAME = re.compile(r"\bc[A-Z][A-Za-z0-9_]*\b")
# A first sentence ends at a full stop (or ? !) followed by a space or the end.
SENTENCE_END = re.compile(r"[.?!](?=\s|$)")
FIELD = re.compile(r"^(\w+)\s*(?:\([^)]*\))?\s+As\b", re.IGNORECASE)


class Entry:
    """One documented item: an export with its type variants, or a record."""

    def __init__(self, kind, name, file, line):
        self.kind = kind              # "export" or "record"
        self.name = name              # the export or record that carries the text
        self.file = file
        self.line = line
        self.members = []             # export dicts (gen_exports) in list order; [] for records
        self.follower_notes = {}      # follower name -> its "Like" remark
        self.summary = ""             # the first sentence
        self.paragraphs = []          # description paragraphs (summary included in the first)
        self.args = {}                # argument or field name -> list of blocks
        self.returns = []
        self.note = []
        self.example = []             # code lines, common indentation removed

    @property
    def names(self):
        return [m["name"] for m in self.members] if self.members else [self.name]

    def all_text(self):
        """Every word of the entry, for the search and for name checks."""
        parts = list(self.paragraphs) + self.returns + self.note + self.example
        for blocks in self.args.values():
            parts += blocks
        parts += list(self.follower_notes.values())
        return "\n".join(parts)


def strip_quote(line):
    """The text of a comment line: the quote and one following space removed."""
    text = line.strip()[1:]
    return text[1:] if text.startswith(" ") else text


def first_sentence(text):
    m = SENTENCE_END.search(text)
    return text[: m.end()].strip() if m else text.strip()


def parse_block(lines, names, where, problems):
    """Parse comment lines (quote removed) into an Entry's parts.

    `names` are the argument or field names the block may describe. Returns a dict with
    paragraphs, args (name -> blocks), returns, note, example; problems are appended.
    Blocks are lists of strings: a plain paragraph, or a list item when it begins with
    "- ".
    """
    parts = dict(paragraphs=[], args={}, returns=[], note=[], example=[])
    lower_names = {n.lower(): n for n in names}
    current = parts["paragraphs"]
    in_example = False
    fresh = True                       # the next plain line starts a new block

    def add(target, text, new_block):
        if new_block or not target:
            target.append(text)
        else:
            target[-1] += " " + text

    for raw in lines:
        text = raw.strip()
        m = SECTION.match(text)
        key = m.group(1) if m else None
        if key in SECTIONS or (key is not None and key.lower() in lower_names):
            in_example = key == "Example"
            if key == "Returns":
                current = parts["returns"]
            elif key == "Note":
                current = parts["note"]
            elif key == "Example":
                current = parts["example"]
            else:
                name = lower_names[key.lower()]
                if name in parts["args"]:
                    problems.append(f"{where}: {name} is described twice")
                current = parts["args"].setdefault(name, [])
            if m.group(2):
                add(current, m.group(2), True)
            fresh = not m.group(2)
            continue
        if in_example:
            current.append(raw.rstrip())
            continue
        if not text:
            fresh = True
            continue
        if text.startswith("- "):
            add(current, text, True)
            fresh = False
            continue
        add(current, text, fresh)
        fresh = False
    if parts["example"]:
        code = [l for l in parts["example"] if l.strip()]
        indent = min(len(l) - len(l.lstrip()) for l in code) if code else 0
        parts["example"] = [l[indent:] for l in parts["example"]]
        while parts["example"] and not parts["example"][-1].strip():
            parts["example"].pop()
    return parts


def record_fields(field_lines):
    """Field names of a Type block's lines."""
    out = []
    for line in field_lines:
        m = FIELD.match(line.strip())
        if m:
            out.append(m.group(1))
    return out


def build(decls, records, record_docs, problems):
    """Entries in list order (records where they stand), checked.

    decls: gen_exports' export dicts (with "doc", "file", "line");
    records: name -> field lines; record_docs: name -> dict(doc, file, line).
    Problems (strings) are appended for missing or ill-fitting text.
    """
    entries, by_name = [], {}
    order = []
    for name, info in record_docs.items():
        order.append((info["file"], info["line"], "record", name, info))
    for d in decls:
        order.append((d["file"], d["line"], "export", d["name"], d))
    order.sort(key=lambda t: (t[0], t[1]))

    # First the groups: each "Like cName" line joins the entry it names, so that the
    # leader's text may describe the arguments its followers add.
    docs = {}
    for fname, line, kind, name, item in order:
        where = f"{fname}:{line}"
        doc = [strip_quote(l) for l in item["doc"]]
        if kind == "export" and doc:
            like = LIKE.match(doc[0].strip())
            if like:
                leader = by_name.get(like.group(1))
                if leader is None or leader.kind != "export" or leader.file != fname:
                    problems.append(f"{where}: {name}: 'Like {like.group(1)}' names no documented "
                                    f"export above it in {fname}")
                    continue
                leader.members.append(item)
                remark = " ".join([like.group(2)] + [l.strip() for l in doc[1:]])
                leader.follower_notes[name] = remark.strip()
                by_name[name] = leader
                continue
        entry = Entry(kind, name, fname, line)
        if kind == "export":
            entry.members.append(item)
        by_name[name] = entry
        entries.append(entry)
        docs[name] = (doc, where)

    for entry in entries:
        doc, where = docs[entry.name]
        if entry.kind == "export":
            names = []
            for m in entry.members:
                names += [a["name"] for a in m["args"] if a["name"] not in names]
        else:
            names = record_fields(records[entry.name])
        if not any(l.strip() for l in doc):
            problems.append(f"{where}: {entry.name} has no reference text")
            continue
        parts = parse_block(doc, names, where, problems)
        entry.paragraphs = parts["paragraphs"]
        entry.args = parts["args"]
        entry.returns = parts["returns"]
        entry.note = parts["note"]
        entry.example = parts["example"]
        entry.summary = first_sentence(entry.paragraphs[0]) if entry.paragraphs else ""
        if not entry.summary:
            problems.append(f"{where}: {entry.name} has no first sentence")
        elif not SENTENCE_END.search(entry.summary):
            problems.append(f"{where}: {entry.name}: the first sentence does not end with a full stop")

    for entry in entries:
        if entry.paragraphs or entry.args or entry.returns:
            check_entry(entry, records, problems)
    known = set(by_name) | {d["name"] for d in decls}
    for entry in entries:
        for word in sorted(set(EXPORT_NAME.findall(entry.all_text()))):
            if word not in known and word not in records:
                problems.append(f"{entry.file}:{entry.line}: {entry.name}: the text names {word}, "
                                f"which is not in the list")
    return entries


def check_entry(entry, records, problems):
    where = f"{entry.file}:{entry.line}: {entry.name}"
    if entry.kind == "record":
        wanted = record_fields(records[entry.name])
        what = "field"
    else:
        wanted = []
        for m in entry.members:
            for a in m["args"]:
                if a["name"] not in wanted:
                    wanted.append(a["name"])
        what = "argument"
        leader = entry.members[0]
        if leader["kind"] == "Function" and not entry.returns:
            problems.append(f"{where}: no Returns: section")
        if leader["kind"] == "Sub" and entry.returns:
            problems.append(f"{where}: a Sub has no result to describe")
        kinds = {(m["kind"], m["result"] is None) for m in entry.members}
        if len(kinds) > 1:
            problems.append(f"{where}: its variants mix Functions and Subs")
    for name in wanted:
        if name not in entry.args or not entry.args[name]:
            problems.append(f"{where}: {what} {name} is not described")
    if entry.kind == "export":
        described = [n for n in entry.args]
        leader_order = [a["name"] for a in entry.members[0]["args"] if a["name"] in described]
        if [n for n in described if n in leader_order] != leader_order:
            problems.append(f"{where}: arguments are not described in the order of the Declare")
