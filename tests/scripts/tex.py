"""Formulas in TeX, as docs/theory has them, worked out: equations of a page, their right sides, their values.

    equations(text)                     [(name, [Formula, ...]), ...]: the sides behind each sign of equality
    Formula("\\frac{a + 1}{2}")({"a": 3})       2.0

A symbol's name is its letter (or its command) and its index: "K_a", "varphi_p", "z_end", "c_p" under a bar. Products may
go without a sign. A degree is a number; angles of sines and cosines are radians.
"""
import math
import re

FUNCTIONS = {"sin": math.sin, "cos": math.cos, "tan": math.tan, "cot": lambda x: 1 / math.tan(x), "ln": math.log,
             "arctan": math.atan, "sqrt": math.sqrt}
TOKEN = re.compile(r"\\[A-Za-z]+|\\[,;! ]|\d+(?:\.\d+)?|\S")
SPACES = {r"\,", r"\;", r"\!", "\\ ", r"\left", r"\right"}
OPENING = {"(": ")", "[": "]", "{": "}"}


def digits_unit(number):
    """Half a unit in the fifth significant digit, to which the sheet rounds."""
    return 0 if number == 0 else 0.5 * 10 ** (math.floor(math.log10(abs(number))) - 4)


class Formula:
    """One side of an equation. Calling it works it out; `numbers` are those that stand in it."""

    def __init__(self, tex):
        tex = re.sub(r"\\text\{[^}]*\}", "", tex).replace("−", "-")
        self.tokens = [token for token in TOKEN.findall(tex) if token not in SPACES]
        self.at, self.numbers = 0, []
        self.root = self.sum()
        if self.at != len(self.tokens):
            raise ValueError(f"unread: {' '.join(self.tokens[self.at:])} of {tex}")

    def __call__(self, values=None):
        return self.root(values or {})

    def error(self):
        """By how much the value may be off since each number has five digits."""
        value, sum_ = self(), 0
        for k, number in enumerate(self.numbers):
            self.numbers[k] = number + digits_unit(number)
            sum_ += abs(self() - value)
            self.numbers[k] = number
        return sum_

    def peek(self):
        return self.tokens[self.at] if self.at < len(self.tokens) else ""

    def take(self):
        self.at += 1
        return self.tokens[self.at - 1]

    def sum(self):
        terms = [self.product()]
        while self.peek() in ("+", "-"):
            sign = 1 if self.take() == "+" else -1
            terms.append(lambda v, sign=sign, term=self.product(): sign * term(v))
        return lambda v: sum(term(v) for term in terms)

    def product(self):
        factors = [self.factor()]
        while self.peek() not in ("", "+", "-", ")", "]", "}", ","):
            sign = self.take() if self.peek() in (r"\cdot", r"\times", "/") else ""
            factor = self.factor()
            factors.append((lambda v, f=factor: 1 / f(v)) if sign == "/" else factor)
        return lambda v: math.prod(factor(v) for factor in factors)

    def factor(self):
        if self.peek() == "-":
            self.take()
            factor = self.factor()
            return lambda v: -factor(v)
        return self.scripted(self.atom())

    def scripted(self, base):
        while self.peek() in ("^", "°"):
            if self.take() == "°":
                base = (lambda v, b=base: math.radians(b(v)))
            else:
                base = (lambda v, b=base, e=self.argument(): b(v) ** e(v))
        return base

    def argument(self):
        """In braces, or one digit or sign."""
        if self.peek() != "{" and self.peek()[0].isdigit() and len(self.peek()) > 1:  # \frac12
            self.tokens[self.at:self.at + 1] = list(self.peek())
        return self.atom()

    def bracketed(self):
        inner = self.sum()
        if self.peek() == ",":
            parts = [inner]
            while self.peek() == ",":
                self.take()
                parts.append(self.sum())
            inner = lambda v: min(part(v) for part in parts)
        self.take()
        return inner

    def function(self, name):
        power = None
        if self.peek() == "^":
            self.take()
            power = self.argument()
        if name == "sqrt" or self.peek() in OPENING:
            of = self.argument()
        else:  # sin 2β is of both, sin α cos α of the first
            parts = [self.scripted(self.atom())]
            while re.match(r"[A-Za-z]|\\(?:alpha|beta|theta|delta|varphi)$", self.peek()) and \
                    self.tokens[self.at - 1][0].isdigit():
                parts.append(self.scripted(self.atom()))
            of = lambda v: math.prod(part(v) for part in parts)
        call = FUNCTIONS[name]
        return (lambda v: call(of(v))) if power is None else (lambda v: call(of(v)) ** power(v))

    def atom(self):
        token = self.take()
        name = token.lstrip("\\")
        if token in OPENING:
            return self.bracketed()
        if token[0].isdigit():
            self.numbers.append(float(token))
            return lambda v, k=len(self.numbers) - 1: self.numbers[k]
        if name in ("frac", "dfrac", "tfrac"):
            upper, lower = self.argument(), self.argument()
            return lambda v: upper(v) / lower(v)
        if name == "min":
            return self.atom()
        if name in FUNCTIONS:
            return self.function(name)
        if name == "pi":
            return lambda v: math.pi
        if name in ("bar", "Delta"):
            name = ("Delta" if name == "Delta" else "") + self.take().lstrip("\\")
        if not name[0].isalpha():
            raise ValueError(f"what is {token}?")
        name += self.indices()
        return lambda v: v[name]

    def indices(self):
        text = ""
        while self.peek() in ("_", "'") or (self.peek() == "^" and re.match(r"\{[A-Za-z]",
                                                                           "".join(self.tokens[self.at + 1:]))):
            if self.take() == "'":
                continue
            text += "_"
            if self.peek() != "{":
                text += self.take()
                continue
            self.take()
            while self.peek() != "}":
                text += self.take()
            self.take()
        return text


def name_of(tex):
    """The symbol that an equation is for."""
    return re.sub(r"\\text\{([^}]*)\}|[\\{} ']|bar", r"\1", tex).strip()


def equations(text):
    """All display equations; several stand in one line with a space between."""
    found = []
    for display in re.findall(r"\$\$(.*?)\$\$", text, re.S):
        for equation in re.split(r",?\s*\\q?quad", display):
            sides = [" ".join(side.split()) for side in equation.split("=")]
            if len(sides) > 1:
                found.append((name_of(sides[0]), sides[1:]))
    return found
