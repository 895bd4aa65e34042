#!/usr/bin/env python3
"""Writes db/demo-history.csv: a made-up draw history for demonstrations and
tests, in the layout of the operator's history file. The numbers are random
(fixed seed), not real results.

Layout: UTF-8, LF line ends, fields separated by ';', every line closed by ';',
a header line first, newest draw first.
"""

import datetime
import os
import random
import sys

FIRST_DRAW = datetime.date(2008, 10, 6)
LAST_DRAW = datetime.date(2026, 11, 18)
JOKER_PLUS_ENDS = datetime.date(2024, 7, 24)  # no Joker+ number from this draw on
DRAW_DAYS = {0: "LUNDI", 2: "MERCREDI", 5: "SAMEDI"}  # Monday, Wednesday, Saturday

COLUMNS = (
    ["annee_numero_de_tirage", "jour_de_tirage", "date_de_tirage", "date_de_forclusion"]
    + ["boule_%d" % i for i in range(1, 6)]
    + ["Numero_Chance", "combinaison_gagnante_en_ordre_croissant"]
    + [name % rank for rank in range(1, 7)
       for name in ("nombre_de_gagnant_au_rang%d", "rapport_du_rang%d")]
    + ["numero_jokerplus", "devise"]
)


def amount(cents):
    """2584.5 euros as "2584,50"."""
    return "%d,%02d" % (cents // 100, cents % 100)


def ranks(rng):
    """Winners and prize for ranks 1 (5 numbers + chance) to 6 (3 numbers)."""
    fields = []
    # Rank 1: the jackpot, mostly not won.
    winners = rng.choice([0] * 8 + [1, 1, 2])
    fields += [str(winners), amount(rng.randrange(200, 1500) * 1000000 // winners) if winners
               else "0,00"]
    # Rank 2: five numbers.
    winners = rng.choice([0, 1, 1, 2, 2, 3, 4, 6])
    fields += [str(winners), amount(rng.randrange(8000000, 60000000) // winners) if winners
               else "0,00"]
    # Ranks 3 to 6: the pool shared by more and more winners.
    for low, high, prize_low, prize_high in ((8, 60, 90000, 450000), (350, 1100, 30000, 110000),
                                             (1200, 3600, 2000, 8000),
                                             (22000, 60000, 500, 1600)):
        fields += [str(rng.randint(low, high)), amount(rng.randint(prize_low, prize_high))]
    return fields


def draws():
    rng = random.Random(20081006)
    rows = []
    day = FIRST_DRAW
    year, number = None, 0
    while day <= LAST_DRAW:
        if day.weekday() in DRAW_DAYS:
            if day.year != year:
                year, number = day.year, 0
            number += 1
            balls = rng.sample(range(1, 50), 5)
            chance = rng.randint(1, 10)
            combination = "-".join(str(b) for b in sorted(balls)) + "+%d" % chance
            joker = ""
            if day < JOKER_PLUS_ENDS:
                joker = "%d %03d %03d" % (rng.randint(0, 9), rng.randint(0, 999),
                                          rng.randint(0, 999))
            rows.append(
                [str((year % 100) * 1000 + number), DRAW_DAYS[day.weekday()],
                 day.strftime("%Y%m%d"), (day + datetime.timedelta(days=91)).strftime("%Y%m%d")]
                + [str(b) for b in balls] + [str(chance), combination] + ranks(rng)
                + [joker, "eur"])
        day += datetime.timedelta(days=1)
    rows.reverse()
    return rows


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "demo-history.csv")
    rows = draws()
    with open(out, "w", encoding="utf-8", newline="\n") as f:
        for fields in [COLUMNS] + rows:
            assert len(fields) == 25
            f.write(";".join(fields) + ";\n")
    print("%s: %d draws" % (out, len(rows)))


if __name__ == "__main__":
    main()
