"""The faults that mutate.py puts into C++ code: what a hand that slips, or forgets, would write."""
import re

# What goes over more lines than this is taken line by line.
LONGEST_STATEMENT = 6

# What a name or a call looks like: "made", "tree.Add(name)", "Make(files, Name(entry))".
CALL = r"[\w:.\->]+(?:\((?:[^()]|\((?:[^()]|\([^()]*\))*\))*\))?"
# A result that is not the good one: an object's own answer, or a comparison with a code.
FAILED = re.compile(rf"!{CALL}\.IsDone\(\)|(?<![!\w.:>]){CALL}\.Failed\(\)|(?<!\w)FAILED\({CALL}\)")
NOT_DONE = re.compile(r"!= ((?:\w+::)*)(?:k|(Result)::)Done\b|== ((?:\w+::)*)(?:k|(Result)::)Failed\b")
FUNCTION = re.compile(r" *(?!if |for |while |switch |else |do |return |catch )[\w:<][^=\[]*\w\(.*\)"
                      r"(?: const| override| noexcept)* \{")
RESULT_FUNCTION = re.compile(r" *(?:static |inline )*(?:\w+::)*(?:ResultCode|Result|Outcome|Status) [\w:]+\(.*")

EXIT = re.compile(r" +if \(.*\) (?:return|break|continue)\b.*;| +if \(.*\) \{ (?:return|break|continue)\b.*; \}")
STEP = re.compile(r" +(?!return|throw|break|continue|const |auto |using |static |[\w:]+&? \w+[ ({=])"
                  r"(?:static_cast<void>\(|[\w:.\->]+(?:\(| \+?= )).*;")
EFFECT = re.compile(r"Write|Line|Copy|Move|Remove|Delete|Record|Run|Reg[SG]et|Make|Ask|Fail|[sS]taging|Pack|Create|"
                    r"Flush|Close|Rename|Send|Post")


def without_comment(line):
    return re.sub(r"(^| +)// .*|^ */// .*", "", line.rstrip())


def is_whole(text):
    ended = text.endswith((";", "{", "}", ":")) and text.count("(") == text.count(")")
    return not text or ended or text.lstrip().startswith("#")


def statements(lines):
    """Pairs of a statement's place (first line, line behind its last) and its text on one line, without comments."""
    at = 0
    while at < len(lines):
        end, text = at + 1, without_comment(lines[at])
        while not is_whole(text) and end < min(at + LONGEST_STATEMENT, len(lines)):
            text, end = text + " " + without_comment(lines[end]).strip(), end + 1
        closing = "".join(lines[end : end + 2]).replace(" ", "")
        if re.match(r" +if \(.*\) \{$", text) and re.fullmatch(r"(return|break|continue)[^;]*;\}", closing):
            text, end = text + " " + lines[end].strip() + " }", end + 2
        if not is_whole(text) or text.count("{") - text.count("}") != text.endswith("{"):
            end, text = at + 1, without_comment(lines[at])
        yield (at, end), text
        at = end


def dropped(text, _):
    """A check whose whole answer is to go elsewhere."""
    if EXIT.fullmatch(text):
        yield "{}  // " + text.strip()


def turned(text, _):
    """A check turned round, or off by one."""
    if not re.search(r"\b(if|while|return)\b", text):
        return
    for old, new in (("!=", "=="), ("==", "!="), (" < ", " <= "), (" > ", " >= "), ("&&", "||"), ("||", "&&"),
                     ("FAILED(", "SUCCEEDED("), ("SUCCEEDED(", "FAILED(")):
        if old in text:
            yield text.replace(old, new, 1)
    if re.search(r"!(?=\w)", text):
        yield re.sub(r"!(?=\w)", "", text, count=1)
    else:
        new = re.sub(rf"{CALL}\.(?:IsDone|Failed)\(\)", r"!\g<0>", text, count=1)
        if new != text:
            yield new


def ignored(text, returns_result):
    """A step is made, but what it answers is not looked at."""
    if FAILED.search(text):
        yield FAILED.sub(r"(\g<0> && false)", text, count=1)
    if found := NOT_DONE.search(text):
        scope, kind = found[1] or found[3] or "", found[2] or found[4] or "ResultCode"
        yield text.replace(found[0], f"== {scope}{kind}(77)", 1)
    if returns_result and (found := re.search(r"\breturn ([^;]*\(.*\)[^;]*);", text)):
        yield text.replace(found[0], f"{{ static_cast<void>({found[1]}); return {{}}; }}", 1)


def left_out(text, _):
    if STEP.fullmatch(text):
        yield "{}  // " + text.strip()


def is_step(text):
    """Something that happens: captions or members set in another order are no fault."""
    return (STEP.fullmatch(text) or EXIT.fullmatch(text)) and EFFECT.search(text)


def mutants(lines):
    """All mutants of a file: first line, line behind the last, and what is to stand there instead."""
    found, previous, returns_result = [], None, False
    for (at, end), text in statements(lines):
        if FUNCTION.fullmatch(text):
            returns_result = RESULT_FUNCTION.fullmatch(text) is not None
        if "Yield()" in text:  # no test sees when the screen is served
            previous = None
            continue
        for change in (dropped, turned, ignored, left_out):
            found += [(at, end, new) for new in change(text, returns_result)]
        step = is_step(text)
        if step and previous and previous[1] == at:
            found.append((previous[0], end, text + "\n" + previous[2]))
        previous = (at, end, text) if step else None
    return found
