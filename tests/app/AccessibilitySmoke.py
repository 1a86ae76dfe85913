"""Drives the running program over AT-SPI as a screen reader user would.

Opens the day's food log from the main menu, reads a logged food's row as a table and checks its
cells against the user file, then picks a date in the previous month in the date picker with keys
alone. Every wait polls the accessibility tree. Exit status: 0 passed, 1 failed, 77 when AT-SPI
itself cannot be reached.
"""

import argparse
import calendar
import datetime
import json
import sys
import time

try:
    import pyatspi
    from gi.repository import Atspi
except ImportError as error:  # the shell script checks first; this is the last word
    print(f"SKIPPED: pyatspi cannot be imported: {error}")
    sys.exit(77)

# What the program shows and names, as a person sees it.
DATE_FORMAT = "%A %B %d, %Y"  # "Wednesday November 25, 2026"
GO_TO_DATE = ", Go to Date"
ALL_FOODS = "Summary (All Foods)"
KEY_PAGE_UP, KEY_LEFT, KEY_RETURN = 0xFF55, 0xFF51, 0xFF0D


class Failure(Exception):
    pass


def wait_for(what, find, seconds=15.0):
    """Polls find() until it gives something; fails naming what was awaited."""
    deadline = time.monotonic() + seconds
    while True:
        try:
            found = find()
        except Exception:  # an object vanished while it was walked: look again
            found = None
        if found:
            return found
        if time.monotonic() > deadline:
            raise Failure(f"waited {seconds:.0f} s for {what}")
        time.sleep(0.1)


def children(node):
    try:
        return [node.getChildAtIndex(i) for i in range(node.childCount)]
    except Exception:
        return []


def find(node, matches, depth=0):
    """The first object under node that matches, depth first; a table's cells are not walked."""
    if node is None or depth > 40:
        return None
    try:
        if matches(node):
            return node
        if node.getRoleName() == "table":
            return None
    except Exception:
        return None
    for child in children(node):
        found = find(child, matches, depth + 1)
        if found:
            return found
    return None


def role_named(role, test):
    return lambda o: o.getRoleName() == role and test(o.name or "")


def showing(node):
    return node.getState().contains(pyatspi.STATE_SHOWING)


def press(button):
    action = button.queryAction()
    for i in range(action.nActions):
        if action.getName(i) == "Press":
            action.doAction(i)
            return
    raise Failure(f"the button '{button.name}' has no Press action")


def application(pid):
    try:
        desktop = pyatspi.Registry.getDesktop(0)
    except Exception as error:
        print(f"SKIPPED: the accessibility registry cannot be reached: {error}")
        sys.exit(77)

    def ours():
        for app in children(desktop):
            try:
                if app is not None and app.get_process_id() == pid:
                    return app
            except Exception:
                continue
        return None

    return wait_for(f"the program (process {pid}) on the accessibility bus", ours, 30.0)


def dialog(app, name):
    return wait_for(
        f"the screen '{name}'",
        lambda: next((d for d in children(app) if d.getRoleName() == "dialog" and d.name == name
                      and showing(d)), None))


def button(where, test, what):
    return wait_for(f"the button {what}",
                    lambda: find(where, lambda o: o.getRoleName() == "push button"
                                 and test(o.name or "") and showing(o)))


def shown_date(logbook):
    name = button(logbook, lambda n: n.endswith(GO_TO_DATE), "that names the date").name
    return datetime.datetime.strptime(name[: -len(GO_TO_DATE)], DATE_FORMAT).date()


def expected_foods(user, day):
    """(name, calories as shown) of every food logged on the day, from the dumped user file."""
    for record in user["days"]:
        if record["date"] == [day.month, day.day, day.year]:
            return {(f["name"], int(f["nutrients"][0] * f["ratio"] + 0.5))
                    for group in record["groups"][:8] for f in group}
    raise Failure(f"the user file has no day {day}")


def read_food_log(app, logbook, user, day):
    press(button(logbook, lambda n: n == "Meals", "'Meals'"))
    meals = dialog(app, "Meals")
    press(button(meals, lambda n: n == ALL_FOODS, f"'{ALL_FOODS}'"))
    foods = dialog(app, ALL_FOODS)
    grid = wait_for("the food log table",
                    lambda: find(foods, role_named("table", lambda n: n == "Food Log")))
    table = grid.queryTable()
    headers = [table.getColumnHeader(c) for c in range(table.nColumns)]
    names = [h.name if h else "" for h in headers]
    if names[:4] != ["Name", "Meal", "Serving", "Calories"]:
        raise Failure(f"the food log's columns are {names}")

    expected = expected_foods(user, day)
    rows = []
    for r in range(table.nRows):
        cells = [table.getAccessibleAt(r, c).name for c in range(table.nColumns)]
        if cells[1]:  # a food row names its meal
            rows.append(cells)
    if not rows:
        raise Failure("the food log shows no food row")
    seen = set()
    for cells in rows:
        calories = cells[3].split()[0] if cells[3] else ""
        if not calories.isdigit():
            raise Failure(f"the row {cells} has no calories")
        seen.add((cells[0], int(calories)))
    if seen != expected:
        raise Failure(f"the food log reads {sorted(seen)}, the user file holds {sorted(expected)}")
    print(f"read {len(rows)} foods of {day}; the first: {rows[0][0]}, {rows[0][3]}")

    press(button(foods, lambda n: n == "OK", "'OK' of the food log"))
    wait_for("the food log to close", lambda: not showing(foods))
    press(button(meals, lambda n: n == "OK", "'OK' of the meals screen"))
    wait_for("the meals screen to close", lambda: not showing(meals))


def focused_cell(table):
    for cell in children(table):
        if cell.getState().contains(pyatspi.STATE_FOCUSED):
            return cell
    return None


def focused_parts(node, depth=0):
    """Every object under node that says it has the focus (a table's first cells included)."""
    if node is None or depth > 40:
        return []
    try:
        found = [f"{node.getRoleName()} '{node.name}'"] if node.getState().contains(
            pyatspi.STATE_FOCUSED) else []
        kids = children(node)[:200]
    except Exception:
        return []
    for child in kids:
        found += focused_parts(child, depth + 1)
    return found


def one_focus(app, where):
    try:
        wait_for(f"one part of {where} to have the focus", lambda: len(focused_parts(app)) == 1)
    except Failure:
        raise Failure(f"on {where} these say they have the focus: {focused_parts(app)}")


def pick_previous_month(app, logbook):
    before = shown_date(logbook)
    press(button(logbook, lambda n: n.endswith(GO_TO_DATE), "that names the date"))
    month = wait_for("the date picker's month",
                     lambda: find(app, lambda o: o.getRoleName() == "table"
                                  and o.name.endswith(", Calendar") and showing(o)))
    # The keys go where the focus is: on the picked day, the one part that has it.
    start_name = f"{before.strftime('%B')} {before.day}, {before.year}"
    wait_for(f"the day '{start_name}' to have the focus",
             lambda: (focused_cell(month) or month).name == start_name)
    year, number = (before.year, before.month - 1) if before.month > 1 else (before.year - 1, 12)
    back = before.replace(year=year, month=number,
                          day=min(before.day, calendar.monthrange(year, number)[1]))
    Atspi.generate_keyboard_event(KEY_PAGE_UP, None, Atspi.KeySynthType.SYM)
    title = back.strftime("%B %Y") + ", Calendar"
    wait_for(f"the picker to show {title}", lambda: month.name == title)
    day_name = f"{back.strftime('%B')} {back.day}, {back.year}"
    wait_for(f"the day '{day_name}' to have the focus",
             lambda: (focused_cell(month) or month).name == day_name)
    Atspi.generate_keyboard_event(KEY_LEFT, None, Atspi.KeySynthType.SYM)
    picked = back - datetime.timedelta(days=1)
    Atspi.generate_keyboard_event(KEY_RETURN, None, Atspi.KeySynthType.SYM)
    wait_for(f"the logbook to show {picked}", lambda: shown_date(logbook) == picked)
    print(f"picked {picked} in the month before {before} with keys")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--pid", type=int, required=True)
    parser.add_argument("--expected", required=True, help="the demo user as dump-user prints it")
    args = parser.parse_args()
    with open(args.expected, encoding="utf-8") as f:
        user = json.load(f)
    Atspi.set_timeout(2000, 20000)  # a call answered late must not stall the run

    try:
        app = application(args.pid)
        main_window = wait_for("the main window", lambda: next(
            (w for w in children(app) if w.getRoleName() == "frame"), None))
        press(button(main_window, lambda n: n.startswith("Step 4"), "'Step 4, Logbook'"))
        logbook = dialog(app, "Logbook")
        one_focus(app, "the logbook")
        day = shown_date(logbook)
        read_food_log(app, logbook, user, day)
        pick_previous_month(app, logbook)
    except Failure as failure:
        print(f"FAILED: {failure}")
        return 1
    print("PASSED")
    return 0


if __name__ == "__main__":
    sys.exit(main())
