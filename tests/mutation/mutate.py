"""Writes mutated copies of C++ sources. One program contains all mutants; one is switched on at run time.

Every site becomes a choice, for example `(lumoMutant(17) ? (a <= b) : (a < b))`, made by the environment variable
LUMO_MUTANT (mutant.h). Mutants that do not compile are dropped.
"""
import itertools
import json
import multiprocessing
import pathlib
import re
import shlex

from clang import cindex
from clang.cindex import CursorKind as Kind, Index, TypeKind

HERE = pathlib.Path(__file__).resolve().parent

SWAPPED = {
    "<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"), "==": ("!=",), "!=": ("==",),
    "&&": ("||",), "||": ("&&",), "+": ("-",), "-": ("+",), "*": ("/",), "/": ("*",),
    "+=": ("-=",), "-=": ("+=",), "++": ("--",), "--": ("++",),
}
COMPARISONS = ("<", "<=", ">", ">=", "==", "!=")
BINARY = (Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR)
FUNCTIONS = (Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.CONSTRUCTOR, Kind.DESTRUCTOR, Kind.FUNCTION_TEMPLATE,
             Kind.CONVERSION_FUNCTION)
STATEMENTS = (*BINARY, Kind.CALL_EXPR, Kind.UNARY_OPERATOR)
# The children of a statement that are statements, and the one that is its condition.
BODIES = {Kind.COMPOUND_STMT: slice(None), Kind.IF_STMT: slice(1, None), **dict.fromkeys(
    (Kind.WHILE_STMT, Kind.FOR_STMT, Kind.CXX_FOR_RANGE_STMT, Kind.CASE_STMT, Kind.DEFAULT_STMT), slice(-1, None))}
CONDITIONS = {Kind.IF_STMT: 0, Kind.WHILE_STMT: 0, Kind.CONDITIONAL_OPERATOR: 0, Kind.DO_STMT: -1}
# Statements for developers only. Log lines may be removed, but not exchanged.
SILENT = re.compile(rb"q(Debug|Info|Warning|Critical)\b|Q_UNUSED|Q_ASSERT")
LOGGED = re.compile(rb"log[A-Z]\(")
CONSTANT = re.compile(rb"(static\s+)?constexpr\b")
ONLY_SPACE = re.compile(rb"(\s|//[^\n]*\n|/\*.*?\*/)*", re.DOTALL)


def unwrapped(cursor, *kinds):
    while cursor.kind in kinds and len(list(cursor.get_children())) == 1:
        cursor = next(cursor.get_children())
    return cursor


class Site:
    """A range of the source with the mutants that can replace it."""

    def __init__(self, start, end, is_statement):
        self.start, self.end, self.is_statement = start, end, is_statement
        self.mutants = []  # of (entry of mutants.json, text)
        self.follows = None  # the previous statement, if a mutant can exchange the two

    def ids(self, operator):
        return [entry["id"] for entry, _ in self.mutants if entry["operator"] == operator]

    def removed_by(self):
        """The mutants in which this statement does not run here, because it is removed or runs earlier."""
        return self.ids("statement") + (self.follows.ids("swap") if self.follows else [])


class Source:
    """One file: finds its sites and renders its copy."""

    def __init__(self, task):
        self.path, self.name, self.flags = task
        self.text = pathlib.Path(self.path).read_bytes()
        self.sites = {}
        self.constants = []  # (start of the word constexpr, end of the declaration, name)
        unit, errors = self.parse(self.text)
        assert not errors, f"{self.path} does not parse: {errors[0]}"
        for cursor in unit.cursor.get_children():
            if cursor.location.file and cursor.location.file.name == self.path:
                self.visit(cursor, "")
        self.number(0)
        self.drop_refused()

    def parse(self, text, *flags):
        unit = Index.create().parse(self.path, [*self.flags, *flags], [(self.path, text.decode())])
        return unit, [d for d in unit.diagnostics if d.severity >= 3]

    def visit(self, cursor, function):
        if cursor.kind == Kind.STATIC_ASSERT:
            return
        if cursor.kind in FUNCTIONS and CONSTANT.match(self.text, cursor.extent.start.offset):
            return  # a constant may be made by it
        if cursor.kind in FUNCTIONS and cursor.is_definition():
            parent = cursor.semantic_parent
            owner = f"{parent.spelling}::" if parent.kind in (Kind.CLASS_DECL, Kind.STRUCT_DECL) else ""
            function = owner + cursor.spelling
        self.function = function
        children = list(cursor.get_children())
        self.add_expression(cursor, children)
        if cursor.kind in CONDITIONS and children[CONDITIONS[cursor.kind]].kind.is_expression():
            self.add_condition(children[CONDITIONS[cursor.kind]])
        self.add_statements(children[BODIES[cursor.kind]] if cursor.kind in BODIES else [])
        if cursor.kind == Kind.VAR_DECL:
            word = CONSTANT.match(self.text, cursor.extent.start.offset)
            if word:
                self.constants.append((word.end() - len(b"constexpr"), cursor.extent.end.offset, cursor.spelling))
        for child in children:
            self.visit(child, function)

    def range_of(self, cursor):
        return cursor.extent.start.offset, cursor.extent.end.offset, False

    def add(self, place, operator, text, before=None, after=None):
        start, end, _ = place
        if start < end:
            words = self.text[start:end] if before is None else before, text if after is None else after
            before, after = (re.sub(r"\s+", " ", word.decode()) for word in words)
            entry = {"file": self.name, "line": self.text.count(b"\n", 0, start) + 1, "function": self.function,
                    "operator": operator, "before": before, "after": after}
            self.sites.setdefault(place, Site(*place)).mutants.append((entry, text))

    def between(self, left, right):
        return self.text[left.extent.end.offset:right.extent.start.offset].decode(errors="replace").strip()

    def add_expression(self, cursor, children):
        """Mutates an operator or a literal."""
        start, end, _ = place = self.range_of(cursor)
        whole = self.text[start:end]
        is_overloaded = cursor.kind == Kind.CALL_EXPR and cursor.spelling in ("operator==", "operator!=")
        if (cursor.kind in BINARY or is_overloaded) and len(children) > 1:
            left, right = children[0], children[-1]
            operator = self.between(left, right)
            is_arithmetic = all(TypeKind.BOOL.value <= side.type.get_canonical().kind.value <= TypeKind.LONGDOUBLE.value
                                for side in (left, right))
            is_allowed = is_arithmetic or operator[:1] not in ("+", "-", "*", "/")
            for swapped in SWAPPED.get(operator, ()) if is_allowed else ():
                self.add(place, operator, self.text[start:left.extent.end.offset] + f" {swapped} ".encode() +
                         self.text[right.extent.start.offset:end])
        elif cursor.kind == Kind.UNARY_OPERATOR:
            operand = self.text[slice(*self.range_of(children[0])[:2])]
            if whole.startswith(b"!"):
                self.add(place, "!", b"static_cast<bool>(" + operand + b")", after=operand)
            for mark, swapped in ((b"++", b"--"), (b"--", b"++")):
                if whole.startswith(mark) or whole.endswith(mark):
                    self.add(place, mark.decode(), whole.replace(mark, swapped))
        elif cursor.kind == Kind.CXX_BOOL_LITERAL_EXPR and whole in (b"true", b"false"):
            self.add(place, "constant", b"false" if whole == b"true" else b"true")
        elif cursor.kind in (Kind.INTEGER_LITERAL, Kind.FLOATING_LITERAL):
            try:
                number = int(whole, 0) if cursor.kind == Kind.INTEGER_LITERAL else float(whole)
            except ValueError:
                return
            # The surrounding text identifies the constant.
            first, last = self.text.rfind(b"\n", 0, start) + 1, self.text.find(b"\n", end)
            for other in (str(number + 1).encode(), str(number - 1).encode()):
                self.add(place, "constant", other, self.text[first:last].strip(),
                         (self.text[first:start] + other + self.text[end:last]).strip())

    def add_condition(self, condition):
        """Negates a condition unless another mutant does."""
        inner = unwrapped(condition, Kind.UNEXPOSED_EXPR, Kind.PAREN_EXPR)
        parts = list(inner.get_children())
        start, end, _ = place = self.range_of(condition)
        is_negation = inner.kind == Kind.UNARY_OPERATOR and self.text.startswith(b"!", start)
        if not is_negation and not (len(parts) > 1 and self.between(parts[0], parts[-1]) in COMPARISONS):
            self.add(place, "condition", b"!(" + self.text[start:end] + b")")

    def add_removal(self, cursor):
        """Removes a statement with its semicolon. Returns its site if it may be exchanged with another."""
        inner = unwrapped(cursor, Kind.UNEXPOSED_EXPR)
        is_return = inner.kind == Kind.RETURN_STMT and not list(inner.get_children())
        start, end, _ = self.range_of(cursor)
        semicolon = re.compile(rb"\s*;").match(self.text, end)
        if not (is_return or inner.kind in STATEMENTS) or not semicolon or SILENT.match(self.text, start):
            return None
        place = start, semicolon.end(), True
        self.add(place, "statement", b"", before=self.text[start:end] + b";")
        return None if is_return or LOGGED.match(self.text, start) else place

    def add_statements(self, children):
        """Removes each statement, and exchanges neighbours: the second runs before the first, not after it."""
        for first, second in itertools.pairwise(map(self.add_removal, children)):
            if first and second and ONLY_SPACE.fullmatch(self.text, first[1], second[0]):
                texts = [self.text[start:end] for start, end, _ in (first, second)]
                if texts[0] != texts[1]:
                    self.add(first, "swap", texts[1], b" ".join(texts), b" ".join(reversed(texts)))
                    self.sites[second].follows = self.sites[first]

    def number(self, first):
        """Numbers the mutants in the order of the text and returns their entries for mutants.json."""
        sites = sorted(self.sites.values(), key=lambda site: (site.start, -site.end))
        found = [entry for site in sites for entry, _ in site.mutants]
        for at, entry in enumerate(found, first):
            entry["id"] = at
        return found

    def render(self):
        """Returns the mutated copy; fills `placed` with the sites' ranges in it, outer ones first."""
        out, self.placed = bytearray(f'#line 1 "{self.name}"\n'.encode()), []
        sites = sorted((site for site in self.sites.values() if site.mutants or site.removed_by()), reverse=True,
                       key=lambda site: (site.start, -site.end, not site.is_statement))
        # A constant with a mutant cannot be constexpr.
        source = bytearray(self.text)
        for at, end, _ in self.constants:
            if any(site.mutants and at <= site.start < end for site in sites):
                source[at:at + len(b"constexpr")] = b"const    "

        def copy(start, end):
            while sites and sites[-1].start < end:
                site = sites.pop()
                assert site.end <= end, f"{self.path}: overlapping ranges at byte {site.start}"
                out.extend(source[start:site.start])
                place(site)
                start = site.end
            out.extend(source[start:end])

        def place(site):
            self.placed.append(placed := [len(out), 0, site])
            if site.is_statement:
                early = (b"if (lumoMutant(%d)) { " % entry["id"] + text + b" } "
                         for entry, text in site.mutants if entry["operator"] == "swap")
                removed = b" || ".join(b"lumoMutant(%d)" % id for id in site.removed_by()) or b"false"
                opening, closing = b"{ " + b"".join(early) + b"if (!(" + removed + b")) { ", b" } }"
            else:
                choices = (b"lumoMutant(%d) ? (" % entry["id"] + text + b") : " for entry, text in site.mutants)
                kept = b"static_cast<bool>(" if site.ids("condition") else b"("
                opening, closing = b"(" + b"".join(choices) + kept, b"))"
            out.extend(opening)
            copy(site.start, site.end)
            out.extend(closing)
            placed[1] = len(out)

        copy(0, len(self.text))
        return bytes(out)

    def drop_refused(self):
        """Drops and counts the mutants that do not compile."""
        self.dropped = 0
        while True:
            rendered = self.render()
            first = rendered.index(b"\n") + 1  # without the #line directive, so that offsets are those of the copy
            _, errors = self.parse(rendered[first:], "-include", f"{HERE}/mutant.h", "-w", "-ferror-limit=0",
                                   "-Wno-c++11-narrowing")
            if not errors:
                return
            hit = set()
            for error in errors:
                offsets = (diagnostic.location.offset + first for diagnostic in [error, *error.children])
                hit.update(next(filter(None, (self.blamed(rendered, offset) for offset in offsets)), []))
            assert any(site.mutants for site in hit), f"{self.path}: no mutant explains {errors[0]}"
            for site in hit:
                self.dropped += len(site.mutants)
                site.mutants = []

    def blamed(self, copy, offset):
        """The innermost site at an offset, else those of the declaration on the line or of a constant in it."""
        around = [site for start, end, site in self.placed if start <= offset < end]
        line_end = copy.find(b"\n", offset)
        declared = [site for start, _, site in self.placed if offset <= start < line_end]
        named = re.findall(r"\w+", copy[offset:line_end].decode(errors="replace"))
        return around[-1:] or declared or [site for at, end, name in self.constants if name in named
                                           for site in self.sites.values() if at <= site.start < end]


def flags_of(command):
    """The flags of the build, without compiler, input and output."""
    command = re.sub(r"\s-(MD|MMD|(o|c|MF|MT|MQ)\s+(\\.|\S)+)(?=\s|$)", "", command)
    flags = itertools.dropwhile(lambda word: not word.startswith("-"), shlex.split(command))
    # libclang does not find the compiler's own headers by itself. Those of another version do not fit.
    version = cindex.conf.lib.clang_getClangVersion
    version.restype, version.errcheck = cindex._CXString, cindex._CXString.from_result
    builtin = f"/usr/lib/clang/{re.search('[0-9.]+', version())[0]}/include"
    return [*flags, "-w", "-include", f"{HERE}/../../cmake/clang_strlen.h", f"-isystem{builtin}"]


def write_copies(root, build, out, names, jobs):
    """Mutates the named files, removes other copies below `out`, and writes the mutants to mutants.json there."""
    commands = json.loads((build / "compile_commands.json").read_text())
    flags = {entry["file"]: flags_of(entry["command"]) for entry in commands}
    tasks = [(str(root / name), name, flags[str(root / name)]) for name in names]
    mutants = []
    with multiprocessing.Pool(jobs) as pool:
        for source in pool.imap(Source, tasks):
            mutants += source.number(len(mutants))
            path, content = out / source.name, source.render()
            path.parent.mkdir(parents=True, exist_ok=True)
            if not path.exists() or path.read_bytes() != content:
                path.write_bytes(content)
            print(f"{source.name}: {source.dropped} dropped, {len(mutants)} mutants so far", flush=True)
    for path in out.rglob("*.cpp"):
        if str(path.relative_to(out)) not in names:
            path.unlink()
    (out / "mutants.json").write_text(json.dumps(mutants, indent=1, ensure_ascii=False))
