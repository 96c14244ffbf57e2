#!/usr/bin/env python3
"""Builds the English message catalog from the sources, like xgettext.

Every message id is written at its call site together with its English
default text: PrintMsg(stream, "SmeSlp0430N", "default", ...),
LocalizeMsg("SmeSlp0430N", "default", ...), zkgetmsg("SmeCom0030N", locale,
size, buffer, locale2, size2, buffer2, "default", ...), or a table row
{"SmeSlp0570N", "default"}. This script collects those pairs from the C++
sources and writes them as a gencat(1) source file.

  extract_messages.py --out C.msg SRCDIR...      write the English catalog
  extract_messages.py --check SRCDIR...          fail on an id without a
      default text beside it, or on one id with two different default texts
  extract_messages.py --check-translation de_DE.msg SRCDIR...
      fail when a translated text takes other printf arguments than the
      English default, or names an id that the sources do not use

Unit tests (*_test.cc) are not scanned.
"""
import argparse
import os
import re
import sys

ID_RE = re.compile(r'^Sme(Slp|Com|Dup|Imp|Ret|Cln|Err)(\d{4})N$')
AREA_SETS = {'Slp': 1, 'Com': 2, 'Dup': 3, 'Imp': 4, 'Ret': 5, 'Cln': 6, 'Err': 7}
# Function name -> (index of the id argument, index of the default text).
CALLS = {'PrintMsg': (1, 2), 'LocalizeMsg': (0, 1), 'zkgetmsg': (0, 7)}
ESCAPES = {'n': '\n', 't': '\t', 'r': '\r', 'a': '\a', 'b': '\b', 'f': '\f',
           'v': '\v', '\\': '\\', '"': '"', "'": "'", '?': '?'}

TOKEN_RE = re.compile(r'''
    (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<string>(?:u8|u|U|L)?"(?:\\.|[^"\\\n])*")
  | (?P<char>'(?:\\.|[^'\\\n])+')
  | (?P<ident>[A-Za-z_]\w*)
  | (?P<number>\d[\w.]*)
  | (?P<punct>\S)
''', re.VERBOSE | re.DOTALL)


def decode(literal):
    """The value of one C string literal."""
    body = literal[literal.index('"') + 1:-1]
    out, i = [], 0
    while i < len(body):
        c = body[i]
        if c != '\\':
            out.append(c)
            i += 1
            continue
        e = body[i + 1]
        if e in ESCAPES:
            out.append(ESCAPES[e])
            i += 2
        elif e in '01234567':
            m = re.match(r'[0-7]{1,3}', body[i + 1:])
            out.append(chr(int(m.group(0), 8)))
            i += 1 + len(m.group(0))
        elif e == 'x':
            m = re.match(r'[0-9a-fA-F]+', body[i + 2:])
            out.append(chr(int(m.group(0), 16)))
            i += 2 + len(m.group(0))
        else:
            out.append(e)
            i += 2
    return ''.join(out)


def tokenize(text):
    """(kind, value, line) tokens without comments; adjacent string literals
    are joined as C++ joins them."""
    tokens = []
    for m in TOKEN_RE.finditer(text):
        kind = m.lastgroup
        if kind == 'comment':
            continue
        line = text.count('\n', 0, m.start()) + 1
        value = m.group(kind)
        if kind == 'string':
            value = decode(value)
            if tokens and tokens[-1][0] == 'string':
                tokens[-1] = ('string', tokens[-1][1] + value, tokens[-1][2])
                continue
        tokens.append((kind, value, line))
    return tokens


def call_arguments(tokens, open_index):
    """The arguments of the call whose '(' is at open_index, each a token list."""
    args, current, depth = [], [], 0
    for tok in tokens[open_index + 1:]:
        if tok[0] == 'punct' and tok[1] in '([{':
            depth += 1
        elif tok[0] == 'punct' and tok[1] in ')]}':
            if depth == 0:
                args.append(current)
                return args
            depth -= 1
        elif tok[0] == 'punct' and tok[1] == ',' and depth == 0:
            args.append(current)
            current = []
            continue
        current.append(tok)
    return args


def single_string(arg):
    return arg[0][1] if len(arg) == 1 and arg[0][0] == 'string' else None


def scan_file(path, pairs, bare):
    """Adds (id -> [(default, where)]) from one file; ids met without a
    default go to bare."""
    with open(path, encoding='utf-8', errors='replace') as f:
        tokens = tokenize(f.read())
    paired = set()
    for i, tok in enumerate(tokens):
        if tok[0] == 'ident' and tok[1] in CALLS and i + 1 < len(tokens) and tokens[i + 1][1] == '(':
            id_index, text_index = CALLS[tok[1]]
            args = call_arguments(tokens, i + 1)
            if len(args) > text_index:
                msg_id, text = single_string(args[id_index]), single_string(args[text_index])
                if msg_id and ID_RE.match(msg_id) and text is not None:
                    pairs.setdefault(msg_id, []).append((text, '%s:%d' % (path, tok[2])))
                    paired.add((args[id_index][0][2], msg_id))
        if tok[0] == 'string' and ID_RE.match(tok[1]):
            nxt = tokens[i + 1:i + 4]
            if (len(nxt) == 3 and nxt[0][1] == ',' and nxt[1][0] == 'string'
                    and nxt[2][0] == 'punct' and nxt[2][1] in ',)}'):
                if (tok[2], tok[1]) not in paired:
                    pairs.setdefault(tok[1], []).append((nxt[1][1], '%s:%d' % (path, tok[2])))
                paired.add((tok[2], tok[1]))
            elif (tok[2], tok[1]) not in paired:
                bare.append((tok[1], '%s:%d' % (path, tok[2])))


def scan(roots):
    pairs, bare = {}, []
    for root in roots:
        for dirpath, dirnames, filenames in os.walk(root):
            dirnames[:] = sorted(d for d in dirnames
                                 if not d.startswith('build') and not d.startswith('.')
                                 and d != 'tests')
            for name in sorted(filenames):
                if name.endswith(('.cc', '.h')) and not name.endswith('_test.cc'):
                    scan_file(os.path.join(dirpath, name), pairs, bare)
    return pairs, bare


def gencat_escape(text):
    out = []
    for ch in text:
        if ch == '\\':
            out.append('\\\\')
        elif ch == '"':
            out.append('\\"')
        elif ch == '\n':
            out.append('\\n')
        elif ch == '\t':
            out.append('\\t')
        elif ord(ch) < 32 or ord(ch) == 127:
            out.append('\\%03o' % ord(ch))
        else:
            out.append(ch)
    return ''.join(out)


def write_catalog(pairs, path):
    by_set = {}
    for msg_id, uses in pairs.items():
        m = ID_RE.match(msg_id)
        by_set.setdefault(AREA_SETS[m.group(1)], []).append((int(m.group(2)), msg_id, uses[0][0]))
    lines = ['$ English message catalog of cyclectl, generated from the sources.',
             '$ Each message: <number> "<text>" in the set of its area.', '$quote "']
    areas = {v: k for k, v in AREA_SETS.items()}
    for set_number in sorted(by_set):
        lines.append('$set %d %s' % (set_number, areas[set_number]))
        for number, msg_id, text in sorted(by_set[set_number]):
            if number > 0:
                lines.append('%d "%s"' % (number, gencat_escape(text)))
    tmp = path + '.tmp'
    with open(tmp, 'w', encoding='utf-8') as f:
        f.write('\n'.join(lines) + '\n')
    os.replace(tmp, path)


# printf argument types, as the catalog reader compares them.
CONV_RE = re.compile(r'%(?:(\d+)\$)?[-+ #0\'I]*(\*(?:\d+\$)?|\d*)(?:\.(\*(?:\d+\$)?|\d*))?'
                     r'(hh|h|ll|l|q|L|j|z|Z|t)?([diouxXcCsSpeEfFgGaAnm%])')


def printf_types(fmt):
    seq, pos = [], {}
    for m in CONV_RE.finditer(fmt):
        position, width, precision, length, conv = m.groups()
        if conv == '%' or conv == 'm':
            continue
        if conv == 'n':
            return None
        for star in (width, precision):
            if star and star.startswith('*'):
                if star != '*':
                    pos[int(star[1:-1])] = 'i'
                else:
                    seq.append('i')
        kind = (length or '') + (conv if conv in 'sScCp' else 'f' if conv in 'eEfFgGaA' else 'd')
        if position:
            pos[int(position)] = kind
        else:
            seq.append(kind)
    if pos and seq:
        return None
    if pos:
        if sorted(pos) != list(range(1, len(pos) + 1)):
            return None
        return [pos[i] for i in sorted(pos)]
    return seq


def read_translation(path):
    """(set, number) -> text of a gencat source written with $quote "."""
    entries, current_set = {}, 1
    with open(path, encoding='utf-8') as f:
        for line in f:
            line = line.rstrip('\n')
            if line.startswith('$set'):
                current_set = int(line.split()[1])
            elif line[:1].isdigit():
                number, _, rest = line.partition(' ')
                rest = rest.strip()
                if rest.startswith('"') and rest.endswith('"'):
                    entries[(current_set, int(number))] = decode(rest)
    return entries


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('--out')
    parser.add_argument('--check', action='store_true')
    parser.add_argument('--check-translation')
    parser.add_argument('roots', nargs='+')
    opts = parser.parse_args()
    pairs, bare = scan(opts.roots)
    problems = []
    if opts.check:
        for msg_id, where in bare:
            if msg_id not in pairs:
                problems.append('%s: message id %s without a default text beside it' % (where, msg_id))
        for msg_id, uses in sorted(pairs.items()):
            texts = sorted(set(t for t, _ in uses))
            if len(texts) > 1:
                problems.append('message id %s has %d different default texts: %s' % (
                    msg_id, len(texts), '; '.join('%s %r' % (w, t) for t, w in uses)))
    if opts.check_translation:
        english = {}
        for msg_id, uses in pairs.items():
            m = ID_RE.match(msg_id)
            english[(AREA_SETS[m.group(1)], int(m.group(2)))] = (msg_id, uses[0][0])
        for key, text in sorted(read_translation(opts.check_translation).items()):
            if key not in english:
                problems.append('%s: set %d message %d is not used by the sources' % (
                    opts.check_translation, key[0], key[1]))
            elif printf_types(text) != printf_types(english[key][1]):
                problems.append('%s: %s takes other arguments than %r' % (
                    opts.check_translation, english[key][0], english[key][1]))
    if opts.out:
        write_catalog(pairs, opts.out)
    for p in problems:
        print(p, file=sys.stderr)
    return 1 if problems else 0


if __name__ == '__main__':
    sys.exit(main())
