#!/usr/bin/env python3
"""Writes calendar.txt, the outside reference for the DT family's day numbers.

Python's datetime is the oracle: the Julian day number of a date is
toordinal() + 1721425 (1 January 2000 is 2451545), and the weekday is
isoweekday() % 7 (0 Sunday .. 6 Saturday).

Each line is "YYYYMMDD JDN WEEKDAY". Two sections:
  - the first of every month of 1601..2600; the test walks every day of these
    ten centuries from them (the next line's day number bounds the month);
  - 1 January and 1 March of every year 1..9999, for the far years.

Run from this directory: python3 make_calendar.py > calendar.txt
"""
import datetime


def line(d):
    return "%04d%02d%02d %d %d" % (d.year, d.month, d.day, d.toordinal() + 1721425, d.isoweekday() % 7)


def main():
    print("# months 1601..2601")
    for year in range(1601, 2601):
        for month in range(1, 13):
            print(line(datetime.date(year, month, 1)))
    print(line(datetime.date(2601, 1, 1)))
    print("# years 1..9999")
    for year in range(1, 10000):
        print(line(datetime.date(year, 1, 1)))
        print(line(datetime.date(year, 3, 1)))


if __name__ == "__main__":
    main()
