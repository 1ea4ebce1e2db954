"""Limits of arguments, read from what a contract refuses, and of fields, from their comments.

refused() turns clauses such as "n, d or leafSize < 1" or "2 * radius >= min(width, height)" into bounds, which are
expressions of C++ over Call::value(). What it does not understand, it leaves to the row of the function.
"""
import re

CONSTANTS = {"FLT_EPSILON": "1.1920929e-7", "FLT_MIN": "1.1754944e-38", "pi": "3.1415927", "-pi": "-3.1415927"}
NUMBER = r"-?(?:\d+(?:\.\d+)?(?:e[+-]?\d+)?|pi\b)"
RELATION = re.compile(r" (<=|>=|<|>) ")
WORDS = ((" not above ", " <= "), (" below ", " < "), (" above ", " > "))
NEGATED = {"<": ">=", "<=": ">", ">": "<=", ">=": "<"}
FLIPPED = {"<": ">", "<=": ">=", ">": "<", ">=": "<="}


class Limits:
    """Of one argument: bounds, of which all hold, or the only values."""

    def __init__(self):
        self.low, self.high, self.choices, self.is_rounded = [], [], [], False


class Reader:
    """Reads the clauses of one function. `variables` maps names to C++; `reals` have the types of those that are no
    whole numbers."""

    def __init__(self, function, variables, reals):
        self.function, self.variables, self.reals = function, variables, reals
        self.limits, self.ordered = {}, []

    def of(self, name):
        return self.limits.setdefault(self.variables[name], Limits())

    def expression(self, text):
        """As C++, None where it holds other words than names."""
        if not re.fullmatch(r"[\w\s.*/+(),-]+", text):
            return None
        unknown = []

        def word(match):
            if match[0] in ("min", "max"):
                return f"std::{match[0]}<double>"
            if match[0] in self.variables:
                return f'c.value("{self.variables[match[0]]}")'
            unknown.extend([] if match[0] in CONSTANTS else [match[0]])
            return CONSTANTS.get(match[0], "")

        code = re.sub(r"(?<![\d.])[A-Za-z_][\w.]*", word, text)
        return None if unknown else code

    def bound(self, name, relation, expression):
        real = self.reals.get(self.variables[name])
        if relation in "<>":
            sign = "-" if relation == "<" else "+"
            expression = f"next<{real}>({expression}, {sign}1)" if real else f"{expression} {sign} 1"
        (self.of(name).high if relation[0] == "<" else self.of(name).low).append(expression)

    def valid(self, left, relation, right):
        """Takes in that left stands in this relation to right."""
        if re.search(r"\w[sS]tep$|^step", left):
            return
        right = re.sub(r" as an? .*", "", right)
        sides = self.expression(left), self.expression(right)
        if None in sides:
            return
        product, sum_ = re.fullmatch(r"(\d+) \* (\w+)", left), re.fullmatch(r"(\w+) \+ (\w+)", left)
        if left in self.variables:
            self.bound(left, relation, sides[1])
        elif right in self.variables:
            self.bound(right, FLIPPED[relation], sides[0])
        elif product and product[2] in self.variables and relation == "<":
            self.bound(product[2], "<=", f"std::ceil({sides[1]} / {product[1]}) - 1")
        elif sum_ and sum_[1] in self.variables:
            name, other = sum_.groups() if sum_[2] not in self.variables else sum_.group(2, 1)
            self.bound(name, relation, f"{sides[1]} - {self.expression(other)}")
            self.of(name).is_rounded = True

    def chain(self, text):
        """0 <= low < high <= 255, which must hold: each is bounded by what comes before it."""
        terms = RELATION.split(text)
        for left, relation, right in zip(terms[::2], terms[1::2], terms[2::2]):
            if left in self.variables and right in self.variables:
                self.ordered.append((left, right, relation))
                self.valid(right, FLIPPED[relation], left)
            elif right in self.variables:
                self.valid(right, FLIPPED[relation], left)
            else:
                self.valid(left, relation, right)

    def finish(self):
        """What is bounded by another one stays below its number."""
        for left, right, relation in self.ordered:
            for number in [each for each in self.of(right).high if "c." not in each]:
                self.bound(left, relation, number)
        return self.limits

    def refused(self, clause):
        clause = re.sub(r"(?<!not) \((?:[^()]|\([^()]*\))*\)", "", clause)
        for part in clause.split("; "):
            qualified = re.match(r"_?(\w+): (.*)", part)
            if qualified and not re.search(rf"(?i:{qualified[1]})(?![a-z])", self.function):
                continue
            self.alternatives(qualified[2] if qualified else part)

    def alternatives(self, part):
        if part.startswith("Needs "):
            for each in part[6:].split(" and "):
                self.chain(each)
            return
        if negated := re.search(r"not \(([^()]*)\)|\bnot (0 <= .*)", part):
            for each in (negated[1] or negated[2]).split(", "):
                self.chain(each)
            part = part[: negated.start()]
        part = re.sub(rf"other than ({NUMBER}) and ({NUMBER})", r"not \1|\2", part)
        subjects, last = [], []
        for piece in re.split(r",? or |, (?![^()]*\))| and ", part):
            for word, sign in WORDS:
                piece = re.sub(rf"^{word.strip()} |{word}", sign, piece)
            subject, rest = self.split(piece)
            if subject:
                subjects.append(subject)
            if rest:
                last = subjects or last
                for each in last:
                    for name in self.named(each):
                        self.condition(name, rest)
                subjects = []

    @staticmethod
    def split(piece):
        match = re.search(r"(^| )(<=|>=|<|>|outside|not) ", piece)
        return (piece[: match.start()].strip(), piece[match.start() :].strip()) if match else (piece.strip(), "")

    def named(self, subject):
        """What a subject stands for: a name, or both sides of a size."""
        if subject.endswith("a side"):
            return [name for name in self.variables if name in ("width", "height")]
        words = re.sub(r"^an? ", "", subject).split()
        camel = words[0] + "".join(word.capitalize() for word in words[1:]) if words else ""
        both = [f"{camel}.width", f"{camel}.height"]
        return both if both[0] in self.variables else [subject]

    def condition(self, subject, rest):
        if within := re.match(rf"(?:outside|not) ({NUMBER})\.\.([\w.]+)", rest):
            self.valid(subject, ">=", within[1])
            self.valid(subject, "<=", within[2])
        elif choices := re.fullmatch(rf"not ({NUMBER})\|({NUMBER})", rest):
            if subject in self.variables:
                self.of(subject).choices = [choices[1], choices[2]]
        elif relation := re.fullmatch(r"(<=|>=|<|>) (.*)", rest):
            self.valid(subject, NEGATED[relation[1]], relation[2])

    def described(self, name, text, enumerators):
        """A line about an argument: "erosions to try, 1..18"."""
        low, high = stated(text, enumerators)
        for each in (name, f"{name}.width", f"{name}.height"):
            if each in self.variables:
                self.of(each).low += [low] if low else []
                self.of(each).high += [high] if high else []


def stated(text, enumerators):
    """The range that a comment gives a field, or an argument: (low, high), either of which may be None."""
    text = re.sub(r"-?\bpi\b", lambda match: CONSTANTS[match[0]], text)
    if both := re.search(rf"({NUMBER})\.\.({NUMBER})", text) or re.search(rf"({NUMBER}) <= \w+ <= ({NUMBER})", text):
        return both[1], both[2]
    if low := re.search(rf"(?:>=|at least|from) ({NUMBER})\b", text):
        return low[1], None
    if low := re.search(rf"(?:> |above )({NUMBER})\b", text):
        return low[1] + " + 1e-6", None
    if high := re.search(r"(?:<=|at most|up to) (0x[\dA-F]+|\d+(?:\.\d+)?)\b", text):
        return ("0" if "ored" in text else None), high[1]
    if either := re.search(rf"^({NUMBER})[^,;]*(?: or|,) ({NUMBER})", text):
        return tuple(sorted(either.groups(), key=float))
    known = [name for name in re.findall(r"[A-Z][A-Z0-9_]+", text.replace("_...", "_")) if len(name) > 4]
    stems = tuple(name for name in known if name[-1] == "_")
    values = [value for each, value in enumerators.items() if each in known or stems and each.startswith(stems)]
    return (str(min(values)), str(max(values))) if len(values) > 1 else (None, None)
