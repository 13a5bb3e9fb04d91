"""reference.html: the searchable reference of every export and record, in one file.

The page carries its styles and script inline and loads nothing, so it works from a folder,
from inside a zip archive and without a network. Entries keep the order of the list, grouped
by family and by export file; the search box hides every entry that does not hold all the
words typed, in its names or its text.
"""
import html
import re

import vb_modules

INLINE_CODE = re.compile(r"`([^`]+)`")
NAME = re.compile(r"\bc[A-Z][A-Za-z0-9_]*\b")


def inline(text, known):
    """Escaped text with `code` spans and links to the entries it names."""
    out = []
    pos = 0
    for m in INLINE_CODE.finditer(text):
        out.append(link_names(html.escape(text[pos:m.start()], quote=False), known))
        out.append(f"<code>{link_names(html.escape(m.group(1), quote=False), known)}</code>")
        pos = m.end()
    out.append(link_names(html.escape(text[pos:], quote=False), known))
    return "".join(out)


def link_names(escaped, known):
    return NAME.sub(lambda m: f'<a href="#{m.group(0)}">{m.group(0)}</a>'
                    if m.group(0) in known else m.group(0), escaped)


def blocks(items, known):
    """Paragraphs and "- " list items as HTML."""
    out, in_list = [], False
    for item in items:
        if item.startswith("- "):
            if not in_list:
                out.append("<ul>")
                in_list = True
            out.append(f"<li>{inline(item[2:], known)}</li>")
        else:
            if in_list:
                out.append("</ul>")
                in_list = False
            out.append(f"<p>{inline(item, known)}</p>")
    if in_list:
        out.append("</ul>")
    return "".join(out)


def declare_text(members, vb6):
    lib = "BRINDLE32P" if vb6 else "BRINDLE64P"
    lines = []
    for d in members:
        lines += vb_modules.vb_lines(d, lib, vb6=vb6)
    return "\n".join(lines)


def type_text(name, fields, vb6):
    lines = [f"Type {name}"]
    for field in fields:
        lines.append("    " + (re.sub(r"\bLongPtr\b", "Long", field) if vb6 else field))
    lines.append("End Type")
    return "\n".join(lines)


def code_block(label, text):
    return (f'<div class="code"><span class="dialect">{label}</span>'
            f"<pre>{html.escape(text, quote=False)}</pre></div>")


def entry_html(e, records, known):
    names = e.names
    anchors = "".join(f'<a id="{n}"></a>' for n in names[1:])
    search = " ".join(names + [e.all_text()]).lower()
    search = " ".join(search.split())
    out = [f'<article class="entry" id="{e.name}" data-text="{html.escape(search)}">{anchors}']
    if e.kind == "record":
        out.append(f'<h4><span class="kind">Type</span> {e.name}</h4>')
    else:
        out.append(f"<h4>{' <span class=sep>&middot;</span> '.join(names)}</h4>")
    if not e.paragraphs:
        out.append('<p class="missing">No reference text yet.</p>')
    out.append(blocks(e.paragraphs, known))
    if e.kind == "record":
        vb6 = type_text(e.name, records[e.name], True)
        vba7 = type_text(e.name, records[e.name], False)
        out.append(code_block("VB6 and VBA7", vb6) if vb6 == vba7 else
                   code_block("VB6", vb6) + code_block("VBA7", vba7))
    else:
        out.append(code_block("VB6", declare_text(e.members, True)))
        out.append(code_block("VBA7", declare_text(e.members, False)))
    if e.follower_notes:
        out.append('<ul class="variants">')
        for n, remark in e.follower_notes.items():
            out.append(f"<li><code>{n}</code>: {inline(remark, known)}</li>")
        out.append("</ul>")
    if e.args:
        out.append(f'<h5>{"Fields" if e.kind == "record" else "Arguments"}</h5><dl>')
        for name, items in e.args.items():
            out.append(f"<dt>{name}</dt><dd>{blocks(items, known)}</dd>")
        out.append("</dl>")
    if e.returns:
        out.append(f"<h5>Returns</h5>{blocks(e.returns, known)}")
    if e.note:
        out.append(f'<div class="note"><h5>Note</h5>{blocks(e.note, known)}</div>')
    if e.example:
        out.append(f"<h5>Example</h5><pre class=example>{html.escape(chr(10).join(e.example), quote=False)}</pre>")
    out.append("</article>")
    return "".join(out)


def section_title(fname, intro):
    """(title, introduction text) of an export file."""
    text = " ".join(l.strip()[1:].strip() for l in intro)
    if ":" in text:
        title, rest = text.split(":", 1)
        rest = rest.strip()
        return title.strip(), rest[:1].upper() + rest[1:]
    return fname[:-4], text


CONVENTIONS = """
<section id="conventions"><h2>Using the library</h2>
<p>Brindle is a library of plain functions for Visual Basic 4, 5 and 6 and for VBA. Every
function is declared with a <code>Declare</code> statement and called directly; there is no
object to create and no initialisation beyond loading the DLL.</p>
<ul>
<li><b>Which file.</b> VB6 and 32-bit Office use <code>BRINDLE32P.dll</code>; 64-bit Office
uses <code>BRINDLE64P.dll</code>. Import <code>BRINDLE32P.bas</code> (VB6) or
<code>BRINDLE64P.bas</code> (VBA7, which chooses the DLL with <code>#If Win64</code>) for
everything, or <code>BrindleCore.bas</code> with only the family modules you need
(<code>BrindleStrings.bas</code>, <code>BrindleDates.bas</code>, &hellip;), never both
kinds. Call <code>BrindleLoad</code> once at start-up: it loads the DLL from the program's
or the document's folder and says in plain words when it cannot.</li>
<li><b>Strings</b> travel as byte strings, one byte per character of the ANSI code page; VB
converts them on the way in and out. A null string (<code>vbNullString</code>) is read as
an empty one. A string result is always a real string, never null.</li>
<li><b>Flags</b> passed to the library are true only when they are exactly <code>True</code>
(-1); any other value, 1 included, counts as false. <b>Boolean results</b> are
<code>True</code> (-1) or <code>False</code> (0).</li>
<li><b>Positions</b> count from 1 unless an entry says otherwise.</li>
<li><b>Arrays</b> are passed whole (<code>Arr()</code>); functions work on their first
dimension unless an entry says otherwise. An array of the wrong element type gives the
failure value.</li>
<li><b>Failures</b> come back as return values (0, False, -1, an empty string or a code the
entry lists); the library raises no error and shows no message. Functions that write a file
say in their entry what becomes of a half-written target when they fail.</li>
<li><b>Records</b> (<code>Type</code> blocks) are declared in the modules; pass them by
reference as the Declare says.</li>
</ul>
<p>Type part of a name or any words in the search box to keep only the entries that hold
all of them; <kbd>/</kbd> moves to the box, <kbd>Esc</kbd> clears it.</p>
</section>
"""

STYLE = """
body{font:15px/1.45 system-ui,-apple-system,"Segoe UI",sans-serif;margin:0;color:#1d1d1f;background:#fafafa}
header{position:sticky;top:0;background:#24292f;color:#fff;padding:.6em 1.2em;display:flex;gap:1em;align-items:center;z-index:2}
header h1{font-size:1.15em;margin:0;white-space:nowrap}
header input{flex:1;font-size:1em;padding:.35em .6em;border-radius:4px;border:0;max-width:36em}
#count{font-size:.9em;opacity:.85;white-space:nowrap}
.layout{display:flex}
nav{width:19em;flex:none;height:calc(100vh - 3em);overflow:auto;position:sticky;top:3em;padding:.8em 1em;border-right:1px solid #ddd;font-size:.88em;background:#f3f3f3}
nav ul{list-style:none;padding-left:.8em;margin:.2em 0}
nav a{color:#0b5cad;text-decoration:none}
nav .fam{font-weight:600;margin-top:.6em}
nav .names{display:none}
main{flex:1;padding:0 2em 4em;max-width:60em}
h2{border-bottom:2px solid #24292f;padding-bottom:.2em;margin-top:1.6em}
h3{margin-top:1.4em;color:#333}
.entry{background:#fff;border:1px solid #ddd;border-radius:6px;padding:.6em 1em;margin:.8em 0}
.entry h4{margin:.2em 0 .4em;font:600 1.05em ui-monospace,Consolas,monospace;color:#0b3d6e}
.entry h5{margin:.7em 0 .2em;font-size:.85em;text-transform:uppercase;letter-spacing:.04em;color:#555}
.kind{color:#777;font-weight:400}
.sep{color:#aaa}
.code{position:relative;margin:.4em 0}
.dialect{position:absolute;right:.5em;top:.2em;font-size:.72em;color:#888}
pre{background:#f4f6f8;border:1px solid #e1e4e8;border-radius:4px;padding:.5em .7em;overflow:auto;font:.82em/1.4 ui-monospace,Consolas,monospace;margin:0}
pre.example{background:#fbfbf2}
dl{margin:.2em 0}dt{font:600 .9em ui-monospace,Consolas,monospace;margin-top:.3em}dd{margin-left:1.4em}dd p{margin:.1em 0}
code{font:.92em ui-monospace,Consolas,monospace;background:#f0f0f0;padding:0 .2em;border-radius:3px}
.note{border-left:3px solid #d4a72c;padding-left:.7em;margin-top:.5em}
.variants{font-size:.9em;margin:.3em 0}
.missing{color:#b00}
[hidden]{display:none!important}
"""

SCRIPT = """
(function(){
  var box=document.getElementById('search'),count=document.getElementById('count');
  var entries=[].slice.call(document.querySelectorAll('article.entry'));
  var groups=[].slice.call(document.querySelectorAll('section.file,section.family'));
  function apply(){
    var words=box.value.toLowerCase().split(/\\s+/).filter(Boolean),shown=0;
    entries.forEach(function(e){
      var t=e.getAttribute('data-text'),ok=words.every(function(w){return t.indexOf(w)>=0;});
      e.hidden=!ok;if(ok)shown++;});
    groups.forEach(function(g){g.hidden=!g.querySelector('article.entry:not([hidden])');});
    document.getElementById('conventions').hidden=words.length>0;
    count.textContent=words.length?shown+' of '+entries.length+' entries':entries.length+' entries';
  }
  box.addEventListener('input',apply);
  document.addEventListener('keydown',function(ev){
    if(ev.key==='/'&&document.activeElement!==box){ev.preventDefault();box.focus();}
    else if(ev.key==='Escape'&&document.activeElement===box){box.value='';apply();}
  });
  apply();
})();
"""


def render(entries, decls, records, intros, version):
    known = {n for e in entries for n in e.names}
    families = []           # [(key, [(file, [entries])])]
    for e in entries:
        key = vb_modules.family_of(e.file)
        if not families or families[-1][0] != key:
            families.append((key, []))
        files = families[-1][1]
        if not files or files[-1][0] != e.file:
            files.append((e.file, []))
        files[-1][1].append(e)

    toc, body = [], []
    for key, files in families:
        module, title = vb_modules.FAMILIES[key]
        toc.append(f'<li class="fam"><a href="#family-{key}">{html.escape(title)}</a><ul>')
        body.append(f'<section class="family" id="family-{key}"><h2>{html.escape(title)}</h2>'
                    f"<p>Declared in <code>{module}.bas</code> (VB6 and VBA7 versions) and in the "
                    f"whole modules.</p>")
        for fname, members in files:
            stem = fname[:-4]
            title_text, intro = section_title(fname, intros.get(fname, []))
            toc.append(f'<li><a href="#file-{stem}">{html.escape(title_text)}</a></li>')
            body.append(f'<section class="file" id="file-{stem}"><h3>{html.escape(title_text)}</h3>')
            if intro:
                body.append(f"<p>{inline(intro, known)}</p>")
            body += [entry_html(e, records, known) for e in members]
            body.append("</section>")
        toc.append("</ul></li>")
        body.append("</section>")

    return f"""<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Brindle {html.escape(version)} reference</title>
<style>{STYLE}</style></head>
<body>
<header><h1>Brindle {html.escape(version)}</h1>
<input id="search" type="search" placeholder="Search names and descriptions (press /)" autocomplete="off" aria-label="Search">
<span id="count"></span></header>
<div class="layout">
<nav><a href="#conventions">Using the library</a><ul>{''.join(toc)}</ul></nav>
<main>{CONVENTIONS}{''.join(body)}</main>
</div>
<script>{SCRIPT}</script>
</body></html>
"""
