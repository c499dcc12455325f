"""Repetitions as the planner works them out, compared with those of python3-dateutil.

usage: expansion_test.py DRIVER [SEED [EVENTS]]

The calendars are made up: rules of every frequency with the parts that RFC 5545 allows for it, exceptions, further
dates and lengths, in every zone of the system. Where both programs may rightly differ, it says so beside what is done
about it.
"""

import datetime
import itertools
import random
import subprocess
import sys
import zoneinfo

from dateutil import rrule

UTC = datetime.timezone.utc
FROM = datetime.datetime(2025, 6, 1, tzinfo=UTC)
UNTIL = datetime.datetime(2027, 6, 1, tzinfo=UTC)
CURRENT_ZONE = "Europe/Vienna"
DAYS = ["MO", "TU", "WE", "TH", "FR", "SA", "SU"]
CALENDAR_SIZE = 50
UNREADABLE = 4


def zone_names():
    """Zones with a place in the name: the planner knows all of these by the same name."""
    return sorted(name for name in zoneinfo.available_timezones() if "/" in name and not name.startswith("Etc/"))


def some(chance, values, most):
    return sorted(chance.sample(values, chance.randint(1, min(most, len(values)))))


def joined(values):
    return ",".join(str(value) for value in values)


def is_misread(rule):
    """Rules that libical is known to get wrong; no program is known to write them."""
    # It numbers weeks as if they began on Monday, and puts weeks that lie in two years into the wrong one.
    if "BYWEEKNO" in rule and ("WKST" in rule or {"1", "52", "53", "-1"} & set(str(rule["BYWEEKNO"]).split(","))):
        return True
    # A day that is counted from both ends of the month takes two positions.
    if "BYSETPOS" in rule and "-" in str(rule.get("BYMONTHDAY", "")):
        return True
    # In rules of hours and less it loses the phase at the hours of BYHOUR, and passes over days that are counted from
    # the end of the month; the latter also in rules of days that name hours.
    is_short = rule["FREQ"] in ("HOURLY", "MINUTELY", "SECONDLY")
    counts_back = "-" in str(rule.get("BYMONTHDAY", ""))
    if is_short:
        return "BYHOUR" in rule or counts_back
    return rule["FREQ"] == "DAILY" and "BYHOUR" in rule and counts_back


class Event:
    """A made-up event: its text, and its occurrences by dateutil."""

    def __init__(self, chance, uid, zone):
        self.chance = chance
        self.uid = uid
        self.form = chance.choice(["zoned", "zoned", "zoned", "utc", "floating", "date"])
        self.zone_name = zone if self.form == "zoned" else CURRENT_ZONE
        self.zone = UTC if self.form == "utc" else zoneinfo.ZoneInfo(self.zone_name)
        self.frequency = chance.choice(["YEARLY", "MONTHLY", "MONTHLY", "WEEKLY", "WEEKLY", "DAILY", "DAILY",
                                        "HOURLY", "MINUTELY", "SECONDLY"])
        if self.form == "date" and self.frequency in ("HOURLY", "MINUTELY", "SECONDLY"):
            self.frequency = "DAILY"
        self.is_short = self.frequency in ("HOURLY", "MINUTELY", "SECONDLY")
        self.start = self.made_start()
        self.length = chance.choice([0, 15, 60, 24 * 60]) if self.form != "date" else 24 * 60 * chance.randint(1, 3)
        self.rule = self.made_rule()
        while is_misread(self.rule):
            self.rule = self.made_rule()
        self.added = [self.start + datetime.timedelta(days=chance.randint(0, 60))
                      for _ in range(chance.choice([0, 0, 0, 1, 3]))]
        self.excluded = self.made_exceptions()

    def made_start(self):
        chance = self.chance
        first = datetime.datetime(2025, 7, 1)
        if not self.is_short:
            first = datetime.datetime(chance.choice([1998, 2012, 2025]), 1, 1)
        start = first + datetime.timedelta(days=chance.randint(0, 400))
        if self.form == "date":
            return start
        return start.replace(hour=chance.choice([0, 1, 2, 3, 8, 12, 23]), minute=chance.choice([0, 0, 30, 59]))

    def made_rule(self):
        chance = self.chance
        interval = chance.choice([1, 1, 1, 2, 3, 5])
        parts = {"FREQ": self.frequency}
        if self.is_short:
            interval = {"HOURLY": interval, "MINUTELY": 20 * interval, "SECONDLY": 1500 * interval}[self.frequency]
        if interval > 1:
            parts["INTERVAL"] = interval
        for name, likelihood, made in self.possible_parts():
            if chance.random() < likelihood:
                parts[name] = made()
        if "BYSETPOS" in parts and not any(name in parts for name in ("BYDAY", "BYMONTHDAY", "BYYEARDAY")):
            del parts["BYSETPOS"]
        end = chance.random()
        if end < 0.35:
            parts["COUNT"] = chance.randint(1, 40)
        elif end < 0.7 or self.is_short:
            days = chance.randint(1, 30) if self.is_short else chance.randint(1, 2000)
            self.until = self.start + datetime.timedelta(days=days)
            parts["UNTIL"] = self.value(self.until, as_utc=True)
        return parts

    def possible_parts(self):
        chance = self.chance
        months = lambda: joined(some(chance, range(1, 13), 4))
        month_days = lambda: joined(some(chance, [1, 2, 13, 15, 28, 29, 30, 31, -1, -2, -31], 3))
        days = lambda: joined(some(chance, DAYS, 4))
        ordinals = lambda: joined(some(chance, [f"{n}{day}" for n in (1, 2, 3, 5, -1, -2) for day in DAYS], 2))
        end = lambda: chance.choice([1, -1])
        position = lambda: joined(some(chance, [1, 2, -1], 1))
        week_start = ("WKST", 0.2, lambda: chance.choice(DAYS))
        if self.frequency == "YEARLY":
            kind = chance.choice(["month", "month day", "ordinal", "year day", "week", "month ordinal"])
            return {
                "month": [("BYMONTH", 1, months)],
                "month day": [("BYMONTH", 1, months), ("BYMONTHDAY", 1, month_days)],
                "ordinal": [("BYDAY", 1, ordinals)],
                "month ordinal": [("BYMONTH", 1, months), ("BYDAY", 1, ordinals)],
                "year day": [("BYYEARDAY", 1, lambda: joined(some(chance, [1, 60, 100, 365, -1, -365], 3)))],
                "week": [("BYWEEKNO", 1, lambda: joined(some(chance, [1, 2, 20, 51, 52, 53, -1], 2))),
                         ("BYDAY", 1, days), week_start],
            }[kind]
        if self.frequency == "MONTHLY":
            if chance.random() < 0.5:
                return [("BYMONTHDAY", 0.8, month_days), ("BYSETPOS", 0.3, end)]
            return [("BYDAY", 1, days), ("BYSETPOS", 0.3, position)] if chance.random() < 0.5 else \
                [("BYDAY", 1, ordinals), ("BYSETPOS", 0.3, end)]
        if self.frequency == "WEEKLY":
            return [("BYMONTH", 0.2, months), ("BYDAY", 0.7, days), week_start]
        times = [("BYHOUR", 0.3, lambda: joined(some(chance, range(24), 3)))] if self.form != "date" else []
        return [("BYMONTH", 0.2, months), ("BYMONTHDAY", 0.2, month_days), ("BYDAY", 0.4, days)] + times

    def by_dateutil(self):
        """The wall times of the rule up to the end of what is asked for, those before it included."""
        text = ";".join(f"{name}={value}" for name, value in self.rule.items() if name != "UNTIL")
        try:
            times = rrule.rrulestr(text, dtstart=self.start, cache=False)
        except ValueError:
            # Hours that the interval never meets: it refuses rules that give nothing.
            return []
        # Clocks differ from that of UTC by less than two days.
        last = UNTIL.replace(tzinfo=None) + datetime.timedelta(days=2)
        if "UNTIL" in self.rule:
            last = min(last, self.until_on_clock())
        return list(itertools.takewhile(lambda time: time <= last, times))

    def until_on_clock(self):
        """UNTIL is an instant: a wall time that a clock change skips is later on the clock than it stands."""
        if self.form != "zoned":
            return self.until
        return self.until.replace(tzinfo=self.zone).astimezone(UTC).astimezone(self.zone).replace(tzinfo=None)

    def made_exceptions(self):
        if self.chance.random() < 0.7:
            return []
        times = self.by_dateutil()
        return self.chance.sample(times, min(len(times), 3))

    def value(self, time, as_utc=False):
        if self.form == "date":
            return time.strftime("%Y%m%d")
        if self.form == "zoned" and as_utc:
            return time.replace(tzinfo=self.zone).astimezone(UTC).strftime("%Y%m%dT%H%M%SZ")
        return time.strftime("%Y%m%dT%H%M%S") + ("Z" if self.form == "utc" else "")

    def lines(self):
        kind = {"date": ";VALUE=DATE", "zoned": f";TZID={self.zone_name}"}.get(self.form, "")
        length = f"P{self.length // 1440}D" if self.form == "date" else f"PT{self.length}M"
        result = ["BEGIN:VEVENT", f"UID:{self.uid}", f"DTSTART{kind}:{self.value(self.start)}", f"DURATION:{length}",
                  "RRULE:" + ";".join(f"{name}={value}" for name, value in self.rule.items())]
        for name, times in (("RDATE", self.added), ("EXDATE", self.excluded)):
            if times:
                result.append(f"{name}{kind}:" + ",".join(self.value(time) for time in times))
        return result + ["END:VEVENT"]

    def expected(self):
        """Start and end of each occurrence in seconds. The start of the event belongs to them although its rule may
        not give it: the standard leaves that open, and calendar programs show it."""
        times = {self.start, *self.added, *self.by_dateutil()} - set(self.excluded)
        result = set()
        for time in times:
            begin = time.replace(tzinfo=self.zone).timestamp()
            end = begin + self.length * 60
            if self.form == "date":
                end = (time + datetime.timedelta(minutes=self.length)).replace(tzinfo=self.zone).timestamp()
            if begin < UNTIL.timestamp() and (end > FROM.timestamp() or begin > FROM.timestamp()):
                result.add((int(begin), int(end)))
        return result


def worked_out(driver, events):
    """What the planner makes of the events, by UID, and the UIDs of those that it lists as left out."""
    lines = ["BEGIN:VCALENDAR"]
    owners = [None]
    for event in events:
        own = event.lines()
        lines += own
        owners += [event.uid] * len(own)
    text = "\r\n".join(lines + ["END:VCALENDAR", ""])
    output = subprocess.run([driver, str(FROM.timestamp()), str(UNTIL.timestamp()), CURRENT_ZONE], input=text,
                            capture_output=True, text=True, check=True).stdout
    found = {event.uid: set() for event in events}
    left_out = {}
    for line in output.splitlines():
        words = line.split()
        if words[0] == "skipped":
            left_out[owners[int(words[1]) - 1]] = int(words[2])
        else:
            found[words[0]].add((int(words[2]), int(words[3])))
    return found, left_out


def shown(seconds):
    return sorted(datetime.datetime.fromtimestamp(begin, UTC).isoformat() for begin, _ in seconds)[:5]


def main():
    driver = sys.argv[1]
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else 20261122
    count = int(sys.argv[3]) if len(sys.argv) > 3 else 3000
    chance = random.Random(seed)
    zones = zone_names()
    chance.shuffle(zones)
    # Each zone is met, in turn.
    events = [Event(chance, f"e{index}", zones[index % len(zones)]) for index in range(count)]
    failures = 0
    compared = occurrences = 0
    for begin in range(0, count, CALENDAR_SIZE):
        some_events = events[begin:begin + CALENDAR_SIZE]
        found, left_out = worked_out(driver, some_events)
        for event in some_events:
            reason = left_out.get(event.uid)
            expected = event.expected()
            occurrences += len(expected)
            # A rule that gives nothing, such as one of the 30th of February, is listed as one that cannot be read.
            is_complete = reason is None or (reason == UNREADABLE and not event.by_dateutil())
            compared += is_complete
            if found[event.uid] == expected and is_complete:
                continue
            failures += 1
            if failures <= 20:
                print("\n".join(event.lines()))
                print("reason", reason, "missing", shown(expected - found[event.uid]),
                      "surplus", shown(found[event.uid] - expected))
    print(f"{compared} events compared, {occurrences} occurrences, {failures} differ (seed {seed})")
    return 1 if failures else 0


sys.exit(main())
