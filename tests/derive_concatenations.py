#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Derives the counts of concatenations that tests/unit/concatenations_test.cpp expects.

For each power of ten it prints
  - how many primes below it are the concatenation of at least two primes,
  - how many numbers below it a search of 1 .. 10^k - 1 for any numbers keeps.
The second differs from the plain mathematical count: the search keeps its list of starts from one
number to the next, and where no prime begins at the first digit, the first start found later is
taken for it. That is followed here step by step, with lists and a recursive enumeration.

Usage: derive_concatenations.py [K]       powers up to 10^K, 6 if not given (7: some minutes)
       derive_concatenations.py --longs   instead: three searches among numbers of 150 digits, with
                                          the last digits and the ways of each number kept (15 s)
"""
import sys

from golden.verifier import est_premier

LONGS = sys.argv[1:] == ["--longs"]
K = int(sys.argv[1]) if len(sys.argv) > 1 and not LONGS else 6
LIMIT = 10**K

is_prime = bytearray([1]) * LIMIT
is_prime[0:2] = b"\0\0"
for p in range(2, int(LIMIT**0.5) + 1):
    if is_prime[p]:
        is_prime[p * p :: p] = bytes(len(range(p * p, LIMIT, p)))


def can_be_cut(digits, at_least):
    """Is a string the concatenation of at least so many primes, leading zeros allowed?"""
    if at_least <= 1 and is_prime[int(digits)]:
        return True
    return any(
        is_prime[int(digits[:i])] and can_be_cut(digits[i:], at_least - 1)
        for i in range(1, len(digits))
    )


class Search:
    """A search for any numbers: `first` is the entry that is carried from one to the next."""

    def __init__(self):
        self.first = 0

    def keeps(self, n):
        digits = str(n)
        starts = []  # (position from 1, lengths of the prime pieces there)
        for t in range(len(digits)):
            lengths = [
                u for u in range(1, len(digits) - t + 1) if is_prime[int(digits[t : t + u])]
            ]
            if lengths:
                starts.append((t + 1, lengths))
                self.first = starts[0][0]
            if self.first == 0:
                break
        if not starts:
            self.first = 0
            return False
        # The pieces of the first entry are taken to begin at the first digit.
        return any(self.reaches_end(length, starts[1:], len(digits)) for length in starts[0][1])

    def reaches_end(self, covered, later, n):
        if covered == n:
            return True
        for i, (start, lengths) in enumerate(later):
            if start == covered + 1:
                return any(self.reaches_end(covered + u, later[i + 1 :], n) for u in lengths)
        return False


def search(low, high, primes_only):
    """The numbers that a search of low .. high keeps, with their ways: every piece of every number is
    tested, the ways are summed from the last digit. The entry that is carried is followed as above."""
    carried = False
    for n in range(low, high + 1):
        if primes_only and not est_premier(n):
            continue
        digits = str(n)
        starts = []
        for t in range(len(digits)):
            lengths = [
                u for u in range(1, len(digits) - t + 1) if est_premier(int(digits[t : t + u]))
            ]
            if lengths:
                starts.append((t, lengths))
                carried = True
            if not carried:
                break
        if not starts:
            carried = False
            continue
        ways = [0] * len(digits) + [1]
        for t, lengths in reversed(starts[1:]):
            ways[t] = sum(ways[t + u] for u in lengths)
        total = sum(ways[u] for u in starts[0][1])
        if total > (1 if primes_only else 0):
            yield n, total


# The first 147 digits of two stretches of numbers, drawn by lot after the first few. No prime begins
# at the first digit of the second among these, so the carried entry matters there.
WITH_STARTS = (
    "235756334722614547602275147520012934977898907230473841040842118492476115526201"
    "244966529340160765416056281964037779324962553512090490781703261289424"
)
WITHOUT_STARTS = (
    "483692120645724107629110409522678788242623820083668382954490962130954245774819"
    "347180333744347426469462318160889375493662910150440002125929802847542"
)


def print_search(lead, low, high, primes_only):
    print(f"{lead[:4]}... {low} .. {high}, {'primes' if primes_only else 'numbers'}:")
    base = 1000 * int(lead)
    for n, ways in search(base + low, base + high, primes_only):
        print(f"{{{n - base}, {ways}}}", end=", ")
    print(flush=True)


def main():
    if LONGS:
        print_search(WITH_STARTS, 0, 199, False)
        print_search(WITH_STARTS, 0, 999, True)
        print_search(WITHOUT_STARTS, 0, 199, False)
        return
    search = Search()
    primes = numbers = 0
    power = 10
    for n in range(1, LIMIT):
        if is_prime[n] and can_be_cut(str(n), 2):
            primes += 1
        if search.keeps(n):
            numbers += 1
        if n == power - 1:
            print(f"below 10^{len(str(n))}: {primes} primes, {numbers} numbers", flush=True)
            power *= 10


main()
