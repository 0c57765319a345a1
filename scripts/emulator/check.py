"""The list of checks. A check takes the lab, and gives nothing or what it wants to say; what is wrong it raises."""

from machine import Failed

CHECKS = []


def check(title):
    def add(function):
        CHECKS.append((title, function))
        return function

    return add


def expect(condition, text):
    if not condition:
        raise Failed(text)


def ends_well(lab, signal="TERM"):
    """The recorder ends as it should, and has written what was typed."""
    status = lab.end(signal)
    found = lab.complaints()
    expect(status == 0, f"ended with {status}: {lab.said()}")
    expect(not found, "; ".join(found))
