#!/usr/bin/python3
"""Writes mutated copies of C++ sources: one program that holds all mutants, switched at run time.

Every place that can be mutated becomes a choice, `(lumoMutant(17) ? (a <= b) : (a < b))`; the mutant is
made active by the environment variable LUMO_MUTANT (mutant.h). What the compiler refuses is dropped.

    mutate.py --root DIR --commands compile_commands.json --out DIR [--jobs N] FILE…

FILEs are relative to the root. The copies keep their names below --out, where no others stay; mutants.json
lists what was changed: id, file, line, function, operator, before, after.
"""
import argparse
import bisect
import glob
import json
import multiprocessing
import os
import re
import shlex

from clang.cindex import CursorKind, Index, TypeKind

HERE = os.path.dirname(os.path.abspath(__file__))

SWAPPED = {
    "<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"), "==": ("!=",), "!=": ("==",),
    "&&": ("||",), "||": ("&&",), "+": ("-",), "-": ("+",), "*": ("/",), "/": ("*",),
    "+=": ("-=",), "-=": ("+=",), "++": ("--",), "--": ("++",),
}
COMPARISONS = ("<", "<=", ">", ">=", "==", "!=")
WRAPPERS = (CursorKind.UNEXPOSED_EXPR, CursorKind.PAREN_EXPR)
FUNCTIONS = (CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.CONSTRUCTOR, CursorKind.DESTRUCTOR,
             CursorKind.FUNCTION_TEMPLATE, CursorKind.CONVERSION_FUNCTION)
STATEMENTS = (CursorKind.CALL_EXPR, CursorKind.BINARY_OPERATOR, CursorKind.UNARY_OPERATOR,
              CursorKind.COMPOUND_ASSIGNMENT_OPERATOR)
# Which children of a statement are statements.
BODIES = {CursorKind.COMPOUND_STMT: slice(None), CursorKind.IF_STMT: slice(1, None), **dict.fromkeys(
    (CursorKind.WHILE_STMT, CursorKind.FOR_STMT, CursorKind.CXX_FOR_RANGE_STMT, CursorKind.CASE_STMT,
     CursorKind.DEFAULT_STMT), slice(-1, None))}
ARITHMETIC = (TypeKind.BOOL, TypeKind.CHAR_U, TypeKind.UCHAR, TypeKind.USHORT, TypeKind.UINT, TypeKind.ULONG,
              TypeKind.ULONGLONG, TypeKind.CHAR_S, TypeKind.SCHAR, TypeKind.SHORT, TypeKind.INT,
              TypeKind.LONG, TypeKind.LONGLONG, TypeKind.FLOAT, TypeKind.DOUBLE, TypeKind.LONGDOUBLE)
# Statements that tell only a developer something; where a line of the log stands matters even less.
SILENT = re.compile(rb"q(Debug|Info|Warning|Critical)\b|Q_UNUSED|Q_ASSERT")
LOGGED = re.compile(rb"(lumo::)?log[A-Z]\(")
ONLY_SPACE = re.compile(rb"(\s|//[^\n]*\n|/\*.*?\*/)*", re.DOTALL)


def unwrapped(cursor, kinds):
    while cursor.kind in kinds and len(list(cursor.get_children())) == 1:
        cursor = next(cursor.get_children())
    return cursor


class Site:
    """A range of the source with the texts that can stand in its place."""

    def __init__(self, start, end, is_statement):
        self.start, self.end, self.is_statement = start, end, is_statement
        self.as_bool = False
        self.alternatives = []  # of dict(kind, before, after, text)
        self.follows = None  # the statement before, if a mutant can exchange the two
        self.inner = []

    def id_of(self, operator):
        return next((a["id"] for a in self.alternatives if a["operator"] == operator), None)

    def exchanged(self):
        """The mutant that runs this statement before the one that it follows."""
        return self.follows.id_of("swap") if self.follows else None

    def is_alive(self):
        return bool(self.alternatives) or self.exchanged() is not None


class Source:
    """One file: finds its sites and renders its copy."""

    def __init__(self, path, shown_name, flags):
        self.path, self.name, self.flags = path, shown_name, flags
        with open(path, "rb") as file:
            self.text = file.read()
        self.sites = {}
        self.constants = []  # (start and end of the word constexpr, end of the declaration, name)

    # --- Finding ----------------------------------------------------------------------------------

    def parse(self):
        unit = Index.create().parse(self.path, args=self.flags)
        errors = [d for d in unit.diagnostics if d.severity >= 3]
        if errors:
            raise RuntimeError(f"{self.path} does not parse: {errors[0]}")
        for cursor in unit.cursor.get_children():
            if cursor.location.file and cursor.location.file.name == self.path:
                self.visit(cursor, "")

    def visit(self, cursor, function):
        kind = cursor.kind
        if kind in FUNCTIONS and cursor.is_definition():
            parent = cursor.semantic_parent
            owner = parent.spelling + "::" if parent and parent.kind in (
                CursorKind.CLASS_DECL, CursorKind.STRUCT_DECL) else ""
            function = owner + cursor.spelling
        if kind == CursorKind.STATIC_ASSERT:
            return
        children = list(cursor.get_children())
        self.add_expression(cursor, children, function)
        self.add_condition(cursor, children, function)
        for child in children[BODIES[kind]] if kind in BODIES else []:
            self.add_removal(child, function)
        if kind == CursorKind.COMPOUND_STMT:
            for first, second in zip(children, children[1:]):
                self.add_swap(first, second, function)
        if kind == CursorKind.VAR_DECL:
            self.add_constant(cursor)
        for child in children:
            self.visit(child, function)

    def range_of(self, cursor):
        return cursor.extent.start.offset, cursor.extent.end.offset

    def add(self, start, end, function, kind, before, after, text, is_statement=False, as_bool=False):
        if start >= end:
            return
        site = self.sites.setdefault((start, end, is_statement), Site(start, end, is_statement))
        site.as_bool = site.as_bool or as_bool
        tidy = lambda words: re.sub(r"\s+", " ", words.decode())
        site.alternatives.append({
            "file": self.name, "line": self.text.count(b"\n", 0, start) + 1, "function": function,
            "operator": kind, "before": tidy(before), "after": tidy(after), "text": text})

    def add_expression(self, cursor, children, function):
        kind = cursor.kind
        start, end = self.range_of(cursor)
        whole = self.text[start:end]
        is_overloaded = kind == CursorKind.CALL_EXPR and cursor.spelling in ("operator==", "operator!=")
        if kind in (CursorKind.BINARY_OPERATOR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR) or is_overloaded:
            if len(children) < 2:
                return
            left, right = children[0], children[-1]
            left_end, right_start = left.extent.end.offset, right.extent.start.offset
            operator = self.text[left_end:right_start].decode().strip()
            is_arithmetic = all(c.type.get_canonical().kind in ARITHMETIC for c in (left, right))
            if operator not in SWAPPED or (operator[0] in "+-*/" and not is_arithmetic):
                return
            for swapped in SWAPPED[operator]:
                text = whole[:left_end - start] + f" {swapped} ".encode() + whole[right_start - start:]
                self.add(start, end, function, operator, whole, text, text)
        elif kind == CursorKind.UNARY_OPERATOR and children:
            operand = self.text[slice(*self.range_of(children[0]))]
            if whole[:1] == b"!" and whole[1:2] != b"=":
                self.add(start, end, function, "!", whole, operand, b"static_cast<bool>(" + operand + b")")
            for operator in ("++", "--"):
                mark, swapped = operator.encode(), SWAPPED[operator][0].encode()
                if whole.startswith(mark) or whole.endswith(mark):
                    text = whole.replace(mark, swapped)
                    self.add(start, end, function, operator, whole, text, text)
        elif kind == CursorKind.CXX_BOOL_LITERAL_EXPR and whole in (b"true", b"false"):
            other = b"false" if whole == b"true" else b"true"
            self.add(start, end, function, "constant", whole, other, other)
        elif kind in (CursorKind.INTEGER_LITERAL, CursorKind.FLOATING_LITERAL):
            try:
                number = int(whole, 0) if kind == CursorKind.INTEGER_LITERAL else float(whole)
            except ValueError:
                return
            for other in (number + 1, number - 1):
                # The words around tell which constant it was.
                line_start = self.text.rfind(b"\n", 0, start) + 1
                line_end = self.text.find(b"\n", end)
                before = self.text[line_start:line_end].strip()
                after = (self.text[line_start:start] + str(other).encode() +
                         self.text[end:line_end]).strip()
                self.add(start, end, function, "constant", before, after, str(other).encode())

    def add_condition(self, cursor, children, function):
        """Negates a condition, where no other mutant does so."""
        at = {CursorKind.IF_STMT: 0, CursorKind.WHILE_STMT: 0, CursorKind.CONDITIONAL_OPERATOR: 0,
              CursorKind.DO_STMT: -1}.get(cursor.kind)
        if at is None or not children or not children[at].kind.is_expression():
            return  # a declaration, or nothing that has a condition
        start, end = self.range_of(children[at])
        inner = unwrapped(children[at], WRAPPERS)
        parts = list(inner.get_children())
        whole = self.text[start:end]
        if inner.kind == CursorKind.UNARY_OPERATOR and whole.startswith(b"!"):
            return
        if inner.kind in (CursorKind.BINARY_OPERATOR, CursorKind.CALL_EXPR) and len(parts) > 1:
            between = self.text[parts[0].extent.end.offset:parts[-1].extent.start.offset]
            if between.decode(errors="replace").strip() in COMPARISONS:
                return
        text = b"!(" + whole + b")"
        self.add(start, end, function, "condition", whole, text, text, as_bool=True)

    def statement(self, cursor):
        """Where a statement that may go begins, ends without its semicolon and with it; its kind."""
        inner = unwrapped(cursor, WRAPPERS[:1])
        is_return = inner.kind == CursorKind.RETURN_STMT and not list(inner.get_children())
        start, end = self.range_of(cursor)
        semicolon = re.compile(rb"\s*;").match(self.text, end)
        if not (is_return or inner.kind in STATEMENTS) or not semicolon or SILENT.match(self.text, start):
            return None
        return start, end, semicolon.end(), inner.kind

    def add_removal(self, statement, function):
        place = self.statement(statement)
        if place:
            start, end, after, _ = place
            self.add(start, after, function, "statement", self.text[start:end] + b";", b"", b"",
                     is_statement=True)

    def add_swap(self, first, second, function):
        """Exchanges two statements that are neighbours: the second also runs early, and not in its place."""
        places = self.statement(first), self.statement(second)
        if any(not p or p[3] == CursorKind.RETURN_STMT or LOGGED.match(self.text, p[0]) for p in places):
            return
        (start, _, end, _), (next_start, _, next_end, _) = places
        texts = self.text[start:end], self.text[next_start:next_end]
        if texts[0] == texts[1] or not ONLY_SPACE.fullmatch(self.text, end, next_start):
            return
        self.add(start, end, function, "swap", b" ".join(texts), b" ".join(reversed(texts)), texts[1],
                 is_statement=True)
        following = self.sites.setdefault((next_start, next_end, True), Site(next_start, next_end, True))
        following.follows = self.sites[start, end, True]

    def add_constant(self, cursor):
        """Constants that a mutant changes can be no constexpr."""
        start, end = self.range_of(cursor)
        word = re.compile(rb"(static\s+)?constexpr\b").search(self.text, start, end)
        if word and word.start() == start:
            at = self.text.index(b"constexpr", start)
            self.constants.append((at, at + len(b"constexpr"), end, cursor.spelling.encode()))

    def number(self, first):
        """Gives the mutants their numbers, in the order of the text; the mutants."""
        found = [a for s in sorted(self.sites.values(), key=lambda s: (s.start, -s.end)) for a in s.alternatives]
        for at, alternative in enumerate(found, first):
            alternative["id"] = at
        return found

    # --- Rendering --------------------------------------------------------------------------------

    def tree(self):
        """The sites with something in them, nested."""
        alive = [s for s in self.sites.values() if s.is_alive()]
        alive.sort(key=lambda s: (s.start, -s.end, not s.is_statement))
        top, stack = [], []
        for site in alive:
            site.inner = []
            while stack and stack[-1].end <= site.start:
                stack.pop()
            if stack and site.end > stack[-1].end:
                raise RuntimeError(f"{self.path}: overlapping ranges at byte {site.start}")
            (stack[-1].inner if stack else top).append(site)
            stack.append(site)
        return top

    def render(self):
        """The copy; fills `placed` with the sites' places in it, outer ones first."""
        self.placed = []
        out = bytearray(f'#line 1 "{self.name}"\n'.encode())
        top = self.tree()
        starts = sorted(s.start for s in self.sites.values() if s.alternatives)
        softened = {at: end for at, end, until, _ in self.constants
                    if bisect.bisect_left(starts, at) < bisect.bisect_left(starts, until)}

        def plain(start, end):
            at = start
            for word in sorted(softened):
                if at <= word and softened[word] <= end:
                    out.extend(self.text[at:word] + b"const")
                    at = softened[word]
            out.extend(self.text[at:end])

        def nested(start, end, sites):
            at = start
            for site in sites:
                plain(at, site.start)
                place(site)
                at = site.end
            plain(at, end)

        def place(site):
            index = len(self.placed)
            self.placed.append([len(out), 0, site])
            if site.is_statement:
                gone = site.id_of("statement"), site.exchanged()
                out.extend(b"{ ")
                for swap in (a for a in site.alternatives if a["operator"] == "swap"):
                    out.extend(b"if (lumoMutant(%d)) { " % swap["id"] + swap["text"] + b" } ")
                gone = b" || ".join(b"lumoMutant(%d)" % g for g in gone if g is not None)
                out.extend(b"if (!(" + (gone or b"false") + b")) { ")
                nested(site.start, site.end, site.inner)
                out.extend(b" } }")
            else:
                out.extend(b"(")
                for alternative in site.alternatives:
                    out.extend(b"lumoMutant(%d) ? (" % alternative["id"] + alternative["text"] + b") : ")
                out.extend(b"static_cast<bool>(" if site.as_bool else b"(")
                nested(site.start, site.end, site.inner)
                out.extend(b"))")
            self.placed[index][1] = len(out)

        nested(0, len(self.text), top)
        return bytes(out)

    def drop_refused(self):
        """Drops what does not compile; says how many mutants that were."""
        dropped = 0
        for _ in range(20):
            copy = self.render()
            # Without the line mark: offsets are of the copy.
            flags = self.flags + ["-include", os.path.join(HERE, "mutant.h"), "-w", "-ferror-limit=0",
                                  "-Wno-c++11-narrowing"]
            first = copy.index(b"\n") + 1
            unit = Index.create().parse(self.path, args=flags,
                                        unsaved_files=[(self.path, copy[first:].decode())])
            errors = [d for d in unit.diagnostics if d.severity >= 3]
            if not errors:
                return dropped
            hit = set()
            for error in errors:
                offsets = (diagnostic.location.offset + first for diagnostic in [error, *error.children])
                hit.update(map(id, next(filter(None, (self.blamed(copy, o) for o in offsets)), [])))
            for site in self.sites.values():
                if id(site) in hit:
                    dropped += len(site.alternatives)
                    site.alternatives = []
            if not hit:
                raise RuntimeError(f"{self.path}: no mutant explains {errors[0]}")
        raise RuntimeError(f"{self.path}: the copy does not get right")

    def blamed(self, copy, offset):
        """The innermost site here, or those of the declaration that starts on the line or of a constant in it."""
        around = [site for start, end, site in self.placed if start <= offset < end]
        line_end = copy.find(b"\n", offset)
        declared = [site for start, _, site in self.placed if offset <= start < line_end]
        named = re.findall(rb"\w+", copy[offset:line_end])
        return around[-1:] or declared or [site for at, _, end, name in self.constants if name in named
                                           for site in self.sites.values() if at <= site.start < end]


def flags_for(path, entry):
    """The flags of the build, without what names the compiler, its input and its output."""
    words = shlex.split(entry["command"]) if "command" in entry else entry["arguments"]
    words = words[next(i for i, w in enumerate(words) if w.startswith("-")):]
    flags, skip = [], False
    for word in words:
        if skip:
            skip = False
        elif word in ("-o", "-MF", "-MT", "-MQ"):
            skip = True
        elif word not in ("-c", "-MD", "-MMD", path):
            flags.append(word)
    # libclang knows no place of its own for the compiler's headers.
    builtin = sorted(glob.glob("/usr/lib/clang/*/include"))[-1:]
    strlen = os.path.join(HERE, "..", "..", "cmake", "clang_strlen.h")
    return flags + ["-w", "-include", strlen, *(word for folder in builtin for word in ("-isystem", folder))]


def write_if_new(path, content):
    if os.path.exists(path):
        with open(path, "rb") as file:
            if file.read() == content:
                return
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(content)


def mutated(task):
    """One file with what can be changed in it, and how many mutants the compiler refused."""
    source = Source(*task)
    source.parse()
    source.number(0)
    return source, source.drop_refused()


def mutate(root, commands, out, names, jobs):
    """Writes the copies and mutants.json."""
    with open(commands) as file:
        entries = {os.path.realpath(os.path.join(e["directory"], e["file"])): e for e in json.load(file)}
    paths = [os.path.realpath(os.path.join(root, name)) for name in names]
    tasks = [(path, name, flags_for(path, entries[path])) for path, name in zip(paths, names)]
    mutants = []
    with multiprocessing.Pool(jobs) as pool:
        for source, dropped in pool.imap(mutated, tasks, 1):
            found = source.number(len(mutants))
            mutants += [{k: v for k, v in alternative.items() if k != "text"} for alternative in found]
            write_if_new(os.path.join(out, source.name), source.render())
            print(f"{source.name}: {len(found)} mutants, {dropped} dropped", flush=True)
    for path in glob.glob(os.path.join(out, "**", "*.cpp"), recursive=True):
        if os.path.relpath(path, out) not in names:
            os.remove(path)
    write_if_new(os.path.join(out, "mutants.json"), json.dumps(mutants, indent=1, ensure_ascii=False).encode())


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for option in ("--root", "--commands", "--out"):
        parser.add_argument(option, required=True)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("files", nargs="+")
    arguments = parser.parse_args()
    mutate(arguments.root, arguments.commands, arguments.out, arguments.files, arguments.jobs)


if __name__ == "__main__":
    main()
