"""The chips that Velmora ships models for, each with its supplement."""

from chips import at90s, mega8, mega16_32, mega64_128, mega162, mega8515, megax8, tiny12, tiny13, tiny26, \
    tiny2313, tinyx4, tinyx5

ALL = (mega8.CHIPS + mega16_32.CHIPS + megax8.CHIPS + mega64_128.CHIPS + mega162.CHIPS + mega8515.CHIPS
       + tiny12.CHIPS + tiny13.CHIPS + tinyx5.CHIPS + tinyx4.CHIPS + tiny2313.CHIPS + tiny26.CHIPS + at90s.CHIPS)


def by_name(name):
    for chip in ALL:
        if chip.name.lower() == name.lower():
            return chip
    raise KeyError(name)
