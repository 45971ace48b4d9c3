#!/usr/bin/env python3
"""Walks formulas through the rewriting steps one by one, slowly and literally, and writes what comes out.

    walk_steps.py > worked_cases.tsv     the table that the tests of the evaluator read
    walk_steps.py --check TABLE          fails when the table is not what comes out
    walk_steps.py FORMULA [a b c]        one formula, each state of the text shown

It shares nothing with the program: strings are taken apart by positions counted from 1, numbers are read and written
by its own code, exactly, with decimal arithmetic.
"""

import itertools
import math
import re
import struct
import sys
from decimal import ROUND_HALF_EVEN, Context, Decimal

TOKENS = ["^", "/", "*", "\\", "mod", "-", "+", "pi", "ln", "log", "sin", "cos", "tan", "exp", "avg", "max", "min"]
OPERATORS = TOKENS[:7]
FUNCTIONS = TOKENS[8:]


class Raised(Exception):
    """One of the errors that a formula can end with."""


# --- Strings by positions from 1 ---

def in_str(start, text, find):
    return text.find(find, start - 1) + 1 if start <= len(text) else 0


def last_position(text, find):
    found, at = 0, in_str(1, text, find)
    while at > 0:
        found, at = at, in_str(at + 1, text, find)
    return found


def left(text, count):
    return text[:max(count, 0)]


def mid(text, start, count=None):
    return text[start - 1:] if count is None else text[start - 1:start - 1 + count]


def replace_first(text, find, replacement):
    at = in_str(1, text, find)
    return text if at == 0 else left(text, at - 1) + replacement + mid(text, at + len(find))


def trim(text):
    return text.strip(" ")


# --- Numbers ---

NUMBER = re.compile(r"[ \t]*([+-]?(?:[0-9]+\.?[0-9]*|\.[0-9]+)(?:[eE][+-]?[0-9]+)?)")


def val(text):
    match = NUMBER.match(text)
    return float(match.group(1)) if match else 0.0


def number_text(value, digits):
    """15 digits for 64-bit, 7 for 32-bit floats."""
    if value == 0:
        return "0"
    exact = Context(prec=digits, rounding=ROUND_HALF_EVEN).create_decimal(Decimal(value)).normalize()
    sign, figures, _ = exact.as_tuple()
    figures = "".join(map(str, figures))
    exponent = exact.adjusted()
    if exponent >= digits or exponent < -4:
        mantissa = figures[0] + ("." + figures[1:] if len(figures) > 1 else "")
        text = "%sE%s%02d" % (mantissa, "-" if exponent < 0 else "+", abs(exponent))
    elif exponent < 0:
        text = "0." + "0" * (-exponent - 1) + figures
    else:
        whole = figures[:exponent + 1].ljust(exponent + 1, "0")
        text = whole + ("." + figures[exponent + 1:] if len(figures) > exponent + 1 else "")
    return ("-" if sign else "") + text


def result_text(value):
    """A value as it is written back: minus zero keeps its sign there."""
    if value == 0 and math.copysign(1, value) < 0:
        return "-0"
    return number_text(value, 15)


def single(text):
    """A 32-bit float out of its text."""
    return struct.unpack("f", struct.pack("f", float(text)))[0]


def finite(value):
    if not math.isfinite(value):
        raise Raised("Overflow")
    return value


def whole(value):
    rounded = round(finite(value))  # ties to the even integer
    if rounded < -2147483648 or rounded > 2147483647:
        raise Raised("Overflow")
    return rounded


# --- The steps ---

def resolve_operand(text):
    negative = False
    if text[:1] in ("@", "-") and text != "":
        negative = True
        text = mid(text, 2)
    if in_str(1, text, "ep") > 0:
        text = replace_first(text, "p", "+")
    if in_str(1, text, "em") > 0:
        text = replace_first(text, "m", "-")
    if text == "pi":
        text = number_text(4 * math.atan(1), 15)
    return "-" + text if negative else text


def power(base, exponent):
    if base == 0 and exponent < 0:
        raise Raised("InvalidArgument")
    if base < 0 and exponent != math.floor(exponent):
        raise Raised("InvalidArgument")
    try:
        return math.pow(base, exponent)
    except OverflowError:
        raise Raised("Overflow") from None


def apply_operator(left_text, right_text, token):
    x, y = finite(val(left_text)), finite(val(right_text))
    if token == "^":
        return result_text(finite(power(x, y)))
    if token == "/":
        if y == 0:
            raise Raised("DivisionByZero")
        return result_text(finite(x / y))
    if token == "*":
        return result_text(finite(x * y))
    if token in ("\\", "mod"):
        a, b = whole(x), whole(y)
        if b == 0:
            raise Raised("DivisionByZero")
        if a == -2147483648 and b == -1:
            raise Raised("Overflow")
        quotient = abs(a) // abs(b)
        if (a < 0) != (b < 0):
            quotient = -quotient
        return str(quotient) if token == "\\" else str(a - quotient * b)
    if token == "-":
        return result_text(finite(x - y))
    return result_text(finite(x + y))


def apply_function(name, argument, state):
    x = finite(val(argument))
    if name in ("ln", "log"):
        if x <= 0:
            raise Raised("InvalidArgument")
        return math.log(x) if name == "ln" else math.log(x) / math.log(10)
    if name == "exp":
        try:
            return math.exp(x)
        except OverflowError:
            raise Raised("Overflow") from None
    if name == "avg":
        state["sum"] += x
        state["count"] += 1
        return state["sum"] / state["count"]
    if name == "max":
        if x > state["max"]:
            state["max"] = x
        return state["max"]
    if name == "min":
        if x < state["min"]:
            state["min"] = x
        return state["min"]
    return {"sin": math.sin, "cos": math.cos, "tan": math.tan}[name](x)


def encode(inner):
    return inner.lower().replace("e+", "ep").replace("e-", "em")


def mark_minus(inner):
    return "@" + mid(inner, 2) if left(inner, 1) == "-" else inner


def one_operation(inner, k):
    """One round for operator k, which occurs in `inner`."""
    token = TOKENS[k]
    pos = in_str(1, inner, token)
    left_part, right_part = left(inner, pos - 1), mid(inner, pos + len(token))

    operand1, boundary, minus_flag = left_part, 0, False
    for m in range(k + 1, 7):
        q = last_position(left_part, TOKENS[m])
        if q > boundary:
            if TOKENS[m] == "-":
                boundary, minus_flag = q - 1, True
            else:
                boundary = q + len(TOKENS[m]) - 1
            operand1 = mid(left_part, boundary + 1)

    operand2, end = right_part, len(right_part) + 1
    for m in range(k, 7):
        found = in_str(2, right_part, TOKENS[m])
        if 0 < found < end:
            end = found
            operand2 = left(right_part, end - 1)

    result = apply_operator(resolve_operand(trim(operand1)), resolve_operand(trim(operand2)), token)
    plus = "+" if val(result) > 0 and minus_flag else ""
    rewritten = left(left_part, boundary) + plus + result + mid(right_part, end)
    rewritten = encode(mark_minus(rewritten))
    if rewritten == inner:  # "+-3": read as "-3"
        if boundary == 0 or mid(inner, boundary, 2) != "+-":
            return None
        rewritten = encode(mark_minus(left(inner, boundary - 1) + mid(inner, boundary + 1)))
    return rewritten


def one_pass(text, state, show):
    p = in_str(1, text, ")")
    before, inner, after = "", text, ""
    if p > 0:
        after = trim(mid(text, p + 1))
        ahead = left(text, p - 1)
        q = last_position(ahead, "(")
        before, inner = trim(left(ahead, q - 1)), mid(ahead, q + 1)
    inner = mark_minus(inner)
    for k in range(7):
        inner = encode(inner)
        while in_str(1, inner, TOKENS[k]) > 0:
            rewritten = one_operation(inner, k)
            if rewritten is None:
                break
            show("    %-4s %r -> %r" % (TOKENS[k], inner, rewritten))
            inner = rewritten
    inner = resolve_operand(inner)
    for f in range(8, 17):
        if before.endswith(TOKENS[f]):
            inner = result_text(finite(apply_function(TOKENS[f], inner, state)))
            before = left(before, len(before) - len(TOKENS[f]))
    text = resolve_operand(before + inner + after)
    show("  pass gives %r" % text)
    return text


def substitute(formula, channels):
    text = formula
    while in_str(1, text, "{") > 0:
        p, q = in_str(1, text, "{"), in_str(1, text, "}")
        if q < p or mid(text, p + 1, q - p - 1) not in channels:
            return text, 0
        value = number_text(single(channels[mid(text, p + 1, q - p - 1)]), 7)
        text = left(text, p - 1) + value + mid(text, q + 1)
    return text, text.count(")")


def evaluate(formula, values, show=lambda line: None):
    text, brackets = substitute(formula, dict(zip("abc", values)))
    show("  text %r, %d brackets" % (text, brackets))
    state = {"sum": 0.0, "count": 0, "max": 0.0, "min": 0.0}
    try:
        for _ in range(brackets + 1):
            text = one_pass(text, state, show)
    except Raised as error:
        return "!" + str(error)
    return text


# --- The cases ---

TOLD = [  # what users rely on, see docs/user/formulas.md
    "1+2*3", "(1+2)*3", "2*(3+(4-1))", "(2)", "-(2+3)", "2-(3+4)", "2^3^2", "8/2*2", "2*8/2", "-2^2", "5-2^2",
    "1-2^2-3", "5-3*2", "5-2*-3", "2--3", "2*-3", "2-+3", "7\\2", "7mod3", "7.5mod2", "1e+3*2", "1e-3*2", "pi*2",
    "-pi", "log(100)", "ln(1)", "sin(0)+1", "*3", "avg({a})", "2+-3", "1+2-3", "1+(2-3)", "{a}+{b}", "5-0*3",
    "5-2mod2", "-(-3)", "3 * -2",
]
BRACKETS = [
    "((((1))))", "((1+2)*(3+4))", "(1)(2)", "()", "()+1", "2()", "(2+3)(4)", "2(3+4)", "-(2)-(3)", "-(-(3))",
    "--(3)", "2*-(3)", "2-(-(3))", "2^-(1)", "(1-(2-(3-(4-5))))", "((2-3)-(4-5))*2", "(2-3)^2", "-(2-3)^2",
    "(-2)^3", "2^(-1)", "(1+2", "1+2)", ")2(", "2)3(4)", "( 1 + 2 ) * 3", " ( 2 ) ", "2 * ( 3 - 5 )", "(1e+20)*2",
    "(1e-05*1)+1", "(0.00001)*(100000)", "(-1e-7)*2", "1-(1e-7)", "(0-1e+20)-1", "1/(3)", "(1/3)*3", "((1/3)+(2/3))",
    "({a}-{b})*2.5+log({c})", "({a}+{b})*({a}-{b})", "(({a}))", "-({a}-{b})", "log(({a}+{b})*10)",
]
FUNCTION_TEXTS = [
    "sin(pi/2)", "cos(pi)", "tan(pi/4)", "exp(1)", "exp(0)", "exp(-1)", "exp(50)", "exp(50)*2", "exp(-50)",
    "-exp(-50)", "ln(exp(2))", "log(1e+10)", "log(1e-10)", "log(1000)", "log(0.001)", "2*log(1000)", "2^log(100)",
    "-log(100)", "1-log(100)", "-log(100)^2", "log(100)^2", "sin(1)^2+cos(1)^2", "sin(sin(sin(1)))", "log(log(1e+10))",
    "max(3)", "max(-3)", "min(-3)", "min(3)", "avg(-2.5)", "max(1)+max(3)", "avg(2)+avg(4)", "avg(avg(8))",
    "avg({a}-{b})*2", "max({a})-min({b})", "SIN(0)", "Sin(1)", "LOG(100)", "xsin(0)", "sinx(0)", "asin(1)", "sin (0)",
    "sin", "sin()", "cos()", "exp()", "pi(2)", "pi()", "2pi", "pi2", "pi pi", "pi+pi", "pi-pi", "-pi-pi", "pi/pi",
    "pi^2", "2*-pi", "sin(-pi/2)", "ln pi", "tan(pi/2)", "ln(pi)", "modmod", "2modmod3", "5mod-3", "-5mod3", "-5mod-3",
    "-7\\2", "7\\-2", "-7\\-2",
]
ROUGH = [
    "", " ", "+", "-", "*", "/3", "^", "^2", "2^", "mod", "\\", "2++3", "2+++3", "2---3", "2+--3", "2-+-3", "+3", "++3",
    "+-3", "-+3", "--3", "---3", "+-+3", "-+-3", "2+-3.50", "2+-03", "2+-3-4", "-2+-3", "-2+-3+-4", "2+-1e-07",
    "2+-1e+20", "2*+-3", "2/-+3", "1+-", "1-", "1+", "-1+", "2+ -3", "2 +-3", "2 - - 3", "2 -3", "2- 3", "- 3", "1 2",
    "abc", "abc+1", "1+abc", "2x+3y", "1.2.3", "1.2.3+1", "..", ".5", "-.5", ".5*2", "-.5*-.5", "1,5", "@3", "@", "2@3",
    "1e5", "1e5*2", "2e", "2e+", "2e-", "e+3", "e-3", "1ep5", "1em5", "1ep5*1", "1E+5", "1E+5*1", "1e+5", "-1e+5",
    "1e-5", "1e+2e+3", "1e+2*1e+3*1e-4", "pi1e+3", "pi1e+3*2", "mp1e-3*1", "em", "ep", "ep+1", "1-2-3-4", "1-2+3-4+5",
    "2/3/4", "2*3*4", "100mod7mod4", "100\\7\\2", "2^2^2^2", "-0", "0-0", "0*-1", "-0*3", "5--0*3", "0/5", "-0/5",
    "0mod3", "-0mod3", "5-0/3", "5-0\\3", "0^0", "5-0^3", "5-0*-3", "5-0/-3", "5-(0*-3)", "1-1e-16", "0.1+0.2", "1/3", "2/3", "1e+15", "1e+15+0",
    "1e+14*9.99999999999999", "123456789012345*10", "123456789012345678", "123456789012345678+0", "0.0001*1",
    "0.00001*1", "1e-300*1e-300", "9.99999999999999e+14+1", "0.1^20", "10^14", "10^15", "10^-4", "10^-5",
    "2147483647\\1", "-2147483648\\1", "-2147483648mod2", "2147483647.4\\1", "2.5\\1", "3.5\\1", "-2.5\\1",
    "0.5\\1", "1.5mod2", "2.5mod3",
]
UNKNOWN = [
    "{x}", "{x}+1", "1+{x}", "({x}+1)", "2*({x}-3)", "{a}+{x}", "{a}+({x})", "{x}+{a}", "{}", "{", "}", "{a", "a}",
    "}{a}", "{a}}{b}", "{a}{b}", "{a{b}}", "{A}", "sin({x})", "5-{x}*2", "{e+x}", "{x-1}", "{mod}",
]
ERRORS = [
    "1/0", "0/0", "1/-0", "1/x", "1\\0", "1mod0", "1\\0.5", "1mod-0.5", "1/(2-2)", "ln(0)", "ln(-1)", "log(0)",
    "log(-100)", "ln()", "0^-1", "0^-0.5", "(-8)^0.5", "-8^0.5", "5-8^0.5", "-8^(1/3)", "1e+308*10", "1e+308+1e+308",
    "-1e+308-1e+308", "1e+308/0.1", "10^309", "exp(710)", "exp(1e+5)", "1e+999*1", "0*1e+999", "1/1e+999", "sin(1e+999)",
    "2147483648\\1", "-2147483649\\1", "2147483647.5\\1", "1\\2147483648", "1mod2147483648", "1e+20mod3",
    "-2147483648\\-1", "-2147483648mod-1", "1e+20\\0", "1e+999", "1e+400-1",
]
VALUES = ["1E-05", "1E+20", "-0.5", "0", "3.4028235E+38"]
MORE_VALUES = ["-1E-05", "-1E+20", "-3.4028235E+38", "9999999", "1E+07", "0.0001", "0.00009999999", "16777217",
               "0.1", "-123.456", "1.17549435E-38", "1E-45"]


def cases():
    """Pairs of a formula and the values of a, b and c."""
    plain = ("7", "-3", "2")
    for formula in TOLD + BRACKETS + FUNCTION_TEXTS + ROUGH + UNKNOWN + ERRORS:
        yield formula, plain
    for first, second in itertools.product(OPERATORS, OPERATORS):
        yield "7%s3%s2" % (first, second), plain
        yield "{a}%s{b}%s{c}" % (first, second), ("-2.5", "4", "-1.5")
        yield "{a}%s{b}%s{c}" % (first, second), ("6", "-2", "-3")
        yield "(7%s3)%s2" % (first, second), plain
        yield "7%s(3%s2)" % (first, second), plain
        yield "9-4%s3%s2" % (first, second), plain
        yield "-4%s3+5%s2" % (first, second), plain
    for operator in OPERATORS:
        for form in ("-6%s4", "6%s-4", "-6%s-4", "+6%s4", "6%s+4", "6%s--4", "--6%s4", "6 %s 4", "6 %s -4", " 6%s 4 ",
                     "5-6%s4", "5+6%s4", "5--6%s4", "5+-6%s4", "5-6%s-4", "5-6%s4-3", "6%s4-3", "6%s4+-3", "6%s-4-3",
                     "-6%s4+3", "6%s", "%s6", "5-%s6", "5-6%s", "%s", "6%s%%s4" % operator, "1e+3%s4", "4%s1e+1",
                     "1e+2%s1e+1", "1e-3%s4", "-1e-3%s4", "4%s1e-1", "1e-1%s1e-2", "5-1e+2%s2", "5-2%s1e+1",
                     "pi%s2", "2%spi", "-pi%s2", "(6)%s(4)", "-(6)%s-(4)", "log(100)%s3", "3%slog(100)"):
            yield form % operator, plain
        for x, y in itertools.product(VALUES, VALUES):
            yield "{a}%s{b}" % operator, (x, y, "0")
            yield "{c}-{a}%s{b}" % operator, (x, y, "1")
    for value in VALUES + MORE_VALUES:
        for formula in ("{a}", "-{a}", "({a})", "-({a})", "{a}*1", "{a}+{a}", "{a}-{a}", "1-{a}", "1+{a}", "2*{a}^2"):
            yield formula, (value, "0", "0")
        for function in FUNCTIONS:
            yield function + "({a})", (value, "0", "0")
    for outer, inner in itertools.product(FUNCTIONS, FUNCTIONS):
        yield "%s%s(2)" % (outer, inner), plain
        yield "%s(%s({c}))" % (outer, inner), plain
        yield "1-%s(2)*%s(3)" % (outer, inner), plain


def table():
    lines = ["formula\ta\tb\tc\texpected"]
    for formula, values in dict.fromkeys(cases()):
        lines.append("\t".join((formula,) + values + (evaluate(formula, values),)))
    return "".join(line + "\n" for line in lines)


def main(arguments):
    if not arguments:
        sys.stdout.write(table())
    elif arguments[0] == "--check":
        with open(arguments[1], encoding="utf-8") as stored:
            if stored.read() != table():
                sys.exit(arguments[1] + " is not what walk_steps.py writes")
    else:
        print(evaluate(arguments[0], arguments[1:] or ("7", "-3", "2"), print))


if __name__ == "__main__":
    main(sys.argv[1:])
