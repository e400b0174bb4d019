#!/usr/bin/env python3
"""Tells in plain words what a launcher's report says (docs/report.md).

Usage: read_report.py REPORT
"""

import json
import sys


def why(candidate):
    """What became of a candidate."""
    if "property" in candidate:
        return "refused: {property} is {reported}, wanted {wanted}".format(**candidate)
    reason = candidate.get("reason")
    return candidate["result"] + (f": {reason}" if reason else "")


def origin(candidate):
    """Where a candidate came from, and what it was tried for."""
    words = [candidate.get("from"), candidate.get("hint")]
    wanted = candidate.get("jvmFile")
    text = " ".join(filter(None, words)) + (f", for {wanted}" if wanted else "")
    return f" ({text})" if text else ""


def start(event):
    words = "".join(f" {argument!r}" for argument in event["arguments"])
    return ("{launcher} {version} on {system}, locale {locale}, code pages {codePage} and "
            "{consoleCodePage}, temporary files in {temporaryRoot}").format(**event) + (
        f"\n  arguments:{words}" if words else "")


def candidate(event):
    return f"  {event['home']}{origin(event)} {why(event)}" + (
        f" [{event['milliseconds']} ms]" if "milliseconds" in event else "")


def installed(event):
    return f"  installed a JVM in {event['home']}" if event["jvmFile"] else (
        f"  the installer left no JVM in {event['home']}")


def launch(event):
    return "  started: {commandLine}\n    in {directory}, class path {classPath}".format(**event)


def end(event):
    message = f": {event['message'].rstrip()}" if "message" in event else ""
    return f"ended with {event['exitValue']} [{event['milliseconds']} ms]{message}"


TELLERS = {each.__name__: each for each in (start, candidate, installed, launch, end)}


def main(path):
    with open(path, encoding="utf-8") as report:
        for line in report:
            event = json.loads(line)
            teller = TELLERS.get(event["event"])
            if teller is not None:  # a later launcher may tell more
                print(teller(event))


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.stdout.reconfigure(encoding="utf-8")
    main(sys.argv[1])
