"""What may go wrong in a line of C++: mutants drawn from its text, and lines that hold a mutant
beside what it is made from, so that one build serves many."""
import collections
import re

# `code` is `old` with comments and literals blanked out, `before` the line of code above it.
Mutant = collections.namedtuple("Mutant", "file line kind old code before begin end put")

# A binary operator stands between blanks here, a template's bracket does not.
SWAPS = [
    ("bound", r" < ", " <= "), ("bound", r" <= ", " < "), ("bound", r" > ", " >= "),
    ("bound", r" >= ", " > "), ("equality", r" == ", " != "), ("equality", r" != ", " == "),
    ("sum", r" \+ ", " - "), ("sum", r" - ", " + "), ("sum", r" \+= ", " -= "),
    ("sum", r" -= ", " += "), ("step", r"\+\+", "--"), ("step", r"--", "++"),
    ("logic", r" && ", " || "), ("logic", r" \|\| ", " && "), ("bits", r" & ", " | "),
    ("bits", r" \| ", " & "), ("bits", r" << ", " >> "), ("bits", r" >> ", " << "),
    ("product", r" \* ", " / "), ("product", r" / ", " * "), ("truth", r"\btrue\b", "false"),
    ("truth", r"\bfalse\b", "true"), ("not", r"!(?=[A-Za-z_(])", ""),
]
NUMBER = re.compile(r"(?<![\w.'])(\d+)(?=[uU]?(?![\w.']))")
CONDITION = re.compile(r"\bif \((.*)\)( \[\[\w+\]\])?( \{| return| continue| break|$)")
DECLARED = re.compile(r"^[\w:<>, ]+[*&]* \w+ = ")
STATEMENT = re.compile(r"^\s*(?!return\b|using\b|throw\b|case\b|break\b|continue\b|static_assert\b)"
                       r"(?:[\w.:\[\]*]|->)+(?:\(.*\)| (?:[-+|&^*]|<<|>>)?= .*);$"
                       r"|^\s*(?:\+\+|--)[\w.\[\]>-]+;$")


def code_of(text):
    """The text with comments, literals of text and directives blanked out, line by line."""
    def blank(match):
        return re.sub(r"[^\n]", " ", match.group())
    pattern = r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])\'|^[ \t]*#(?:[^\n]*\\\n)*[^\n]*'
    return re.sub(pattern, blank, text, flags=re.S | re.M).split("\n")


def mutants_of(file, text):
    lines = text.split("\n")
    before = ""
    for number, code in enumerate(code_of(text), 1):
        line, above = lines[number - 1], before
        before = code.rstrip() or before
        if not code.strip() or re.match(r"\s*(static_assert|template|using|friend class)\b", code):
            continue

        def put(begin, end, new, kind):
            return Mutant(file, number, kind, line, code, above, begin, end, new)
        for kind, old, new in SWAPS:
            for found in re.finditer(old, code):
                yield put(found.start(), found.end(), new, kind)
        for found in NUMBER.finditer(code):
            value = int(found.group(1))
            for other in {value + 1, max(value - 1, 0)} - {value}:
                yield put(found.start(1), found.end(1), str(other), "number")
        found = CONDITION.search(code)
        if found and ";" not in found.group(1) and not DECLARED.match(found.group(1)):
            begin, end = found.span(1)
            yield put(begin, end, "!(" + line[begin:end] + ")", "condition")
        if STATEMENT.match(code) and code.count("(") == code.count(")"):
            begin = len(code) - len(code.lstrip())
            yield put(begin, len(line), ";", "statement")


def mutated(mutant):
    return mutant.old[:mutant.begin] + mutant.put + mutant.old[mutant.end:]


OPENING, CLOSING = "([{", ")]}"


def _left_end(code, at, before):
    """Where the expression begins that `at` is in, or -1 where a line above begins it."""
    depth = 0
    while at > 0:
        at -= 1
        letter = code[at]
        if letter in CLOSING:
            depth += 1
        elif letter in OPENING:
            if depth == 0:
                return at + 1
            depth -= 1
            if depth == 0 and re.search(r"\b(if|if constexpr|while|for) $", code[:at]):
                return -1  # the statement behind a condition in one line
        elif depth == 0:
            if letter in ",;?" or letter == ":" and ":" not in (code[at - 1:at], code[at + 1:at + 2]):
                return at + 1
            if letter == "=" and code[at + 1:at + 2] != "=" and (
                    code[at - 1] not in "=!<>" or code[at - 2:at] in ("<<", ">>")):
                return at + 1
            if re.search(r"\b(return|else)$", code[:at + 1]):
                return at + 1
    return 0 if not before or before[-1] in ";{}:,(" else -1


def _right_end(code, at):
    """Where it ends, or -1 where a line below ends it."""
    depth = 0
    for place in range(at, len(code)):
        letter = code[place]
        if letter in OPENING:
            depth += 1
        elif letter in CLOSING:
            if depth == 0:
                return place
            depth -= 1
        elif depth == 0 and (letter in ",;?" or letter == ":" and code[place - 1] == " "):
            return place
    return -1


def _is_balanced(code):
    depth = 0
    for letter in code:
        depth += (letter in OPENING) - (letter in CLOSING)
        if depth < 0:
            return False
    return depth == 0


STATEMENTS = ("if (", "for (", "while (", "return")
STATED = re.compile(r"(if \(|for \(|while \(|return\b|[\w.:\[\]*>()-]+(\(| [-+|&^*<>]*= ))(?!.*\{[^}]*$).*;$")


def _switched_whole(mutant, asked):
    """A statement that begins and ends in its line."""
    code = mutant.code.rstrip()
    begin = len(code) - len(code.lstrip())
    whole = STATED.match(code[begin:]) and code.count("(") == code.count(")")
    if not whole or mutant.before[-1:] not in ("", ";", "{", "}", ":") or mutant.begin < begin:
        return None
    new = mutant.old[begin:mutant.begin] + mutant.put + mutant.old[mutant.end:max(mutant.end, len(code))]
    return f"{mutant.old[:begin]}if ({asked}) {{ {new} }} else {{ {mutant.old[begin:len(code)]} }}"


def switched(mutant, asked):
    """The line with both, of which the condition `asked` chooses, or None where it has no place. What
    the compiler works out by itself stays as it was, so no constant is switched."""
    code, line = mutant.code, mutant.old
    if re.search(r"\b(constexpr|constinit|consteval|case|enum|noexcept|alignas)\b", code):
        return None
    if "//" in mutant.put:
        return None
    begin, end = _left_end(code, mutant.begin, mutant.before), _right_end(code, mutant.end)
    assigns = re.search(r"[-+]= ", code[mutant.begin:mutant.end])  # binds less than ?:
    if begin < 0 or end < 0 or assigns or mutant.kind == "statement":
        return _switched_whole(mutant, asked)
    begin += len(code[begin:]) - len(code[begin:].lstrip())
    new = line[begin:mutant.begin] + mutant.put + line[mutant.end:end]
    if not (_is_balanced(new) and _is_balanced(line[begin:end])) or new.startswith(STATEMENTS):
        return _switched_whole(mutant, asked)
    return f"{line[:begin]}({asked} ? ({new}) : ({line[begin:end]})){line[end:]}"
