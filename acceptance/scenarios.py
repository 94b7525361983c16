"""What a user does with the program, and what they must see and hear."""

import contextlib
import math
import os
import signal
import socket
import sqlite3
import sys
import time

from desktop import wait_for
from desktops import SCENARIOS as OTHER_DESKTOPS
from ui import (MAIN_TITLE, App, Failure, check, click, enabled, extents, fresh_copy, name, pixels,
                read_rows, read_setting, role, showing, text_of, type_into, x_title, main_shown)

SNOOZE_CAPTION = 'click me to turn off the alarm'
REPEAT_SECONDS = 15
DARK_GREEN = (0, 64, 0)


class Context:
    def __init__(self, desktop, staged, work):
        self.desktop = desktop
        self.recorder = desktop.recorder
        self.staged = staged
        self.work = work
        self.shared = {}
        self.apps = []
        self.keep = []                 # apps a later scenario goes on with
        self.scenario = None

    def note(self, message):
        """A measurement worth seeing whether or not the scenario passes."""
        print(f'  {self.scenario}: {message}', file=sys.stderr, flush=True)

    def folder(self, label):
        return fresh_copy(self.staged, os.path.join(self.work, label))

    def launch(self, folder, label=None, **extra_env):
        app = App(self.desktop, folder, label or self.scenario).start(**extra_env)
        self.apps.append(app)
        return app

    def stop_apps(self, everything=False):
        for app in self.apps:
            if everything or app not in self.keep:
                app.stop()
        self.apps = [a for a in self.apps if a.running()]


def sleep_until(moment):
    delay = moment - time.time()
    if delay > 0:
        time.sleep(delay)


def clock(t):
    return time.strftime('%H:%M:%S', time.localtime(t)) + f'.{int((t % 1) * 1000):03d}'


def date_text(t):
    return time.strftime('%b %d, %Y', time.localtime(t))


def time_text(t):
    return time.strftime('%H:%M', time.localtime(t))


def wait_setting(folder, column, value, timeout=5):
    got = wait_for(lambda: read_setting(folder, column) == value, timeout, 0.1)
    check(got, f'{column} holds {read_setting(folder, column)!r}, expected {value!r}')


def box(app, title, timeout=15):
    return app.wait_window(title, timeout, roles=('alert', 'dialog'))


def expect_text(node, expected, what):
    got = wait_for(lambda: text_of(node) == expected, 3, 0.05)
    check(got, f'{what} shows {text_of(node)!r}, expected {expected!r}')


def outcome(code):
    if code < 0:
        return f'crashed with signal {-code} ({signal.Signals(-code).name})'
    return f'ended with exit status {code}'


def expect_clean_end(app, what, timeout=10):
    code = app.wait_exit(timeout)
    check(code is not None, f'{what} did not end the program')
    check(code == 0, f'on {what} the program {outcome(code)}')


def tray_is_empty(desktop):
    check(wait_for(lambda: not desktop.docked_icons(), 10), 'an icon from an earlier run is still in the tray')


# ---------------------------------------------------------------------------

def first_start(ctx):
    tray_is_empty(ctx.desktop)
    app = ctx.launch(ctx.folder('first-start'))
    frame = app.main()
    check(showing(frame), 'the main window is not showing')
    date1 = app.wait_find('Date 1', 'text')
    x, y, w, h = extents(date1)
    fx, fy, fw, fh = extents(frame)
    check(fx <= x and x + w <= fx + fw and fy <= y and y + h <= fy + fh,
          'the table window is not inside the main window')
    check(app.find('Save', 'push button') is not None, 'the table window has no Save button')

    check(wait_for(ctx.desktop.docked_icons, 10), 'no icon docked in the tray')

    bar = next((c for c in frame if role(c) == 'menu bar'), None)
    check(bar is not None, 'the main window has no menu bar')
    shown = [name(item) for item in bar if showing(item)]
    check(shown == ['Program', 'Utilities', 'Help'],
          f'the menu bar shows {shown}, expected Program, Utilities, Help')


def alarm_through_interface(ctx):
    folder = ctx.folder('alarm')
    app = ctx.launch(folder)
    app.main()
    rows = [app.wait_find(f'{field} {n}', 'text') for n in (1, 2) for field in ('Date', 'Time', 'Description')]
    times_box = app.wait_find('Sound times', 'text')
    save = app.wait_find('Save', 'push button')

    # The first alarm at a minute that leaves time to type; the second one a minute later.
    now = time.time()
    first = math.floor(now / 60) * 60 + 60
    if first - now < 20:
        first += 60
    second = first + 60
    wanted = [(date_text(first), time_text(first), 'Alarm played twice'),
              (date_text(second), time_text(second), 'Alarm stopped by snooze')]
    for row, (date, hhnn, what) in enumerate(wanted):
        date_box, time_box, details = rows[row * 3:row * 3 + 3]
        type_into(date_box, date)
        expect_text(date_box, date, f'Date {row + 1}')
        type_into(time_box, hhnn)
        expect_text(time_box, hhnn, f'Time {row + 1}')
        type_into(details, what, finish='Tab')
    type_into(times_box, '2', finish='Tab')
    wait_setting(folder, 'intSoundAlarmTimes', 2)
    click(save)
    check(wait_for(lambda: read_rows(folder)[:2] == wanted, 5),
          f'Save stored {read_rows(folder)[:2]}, expected {wanted}')
    ctx.shared['saved'] = (folder, app, wanted)
    ctx.keep.append(app)
    check(time.time() < first - 3, 'setting the alarm up took until the alarm minute')
    quiet_from = time.time()

    # First alarm: two plays, 15 s apart; the snooze button shows meanwhile.
    snooze = app.wait_find(SNOOZE_CAPTION, 'push button', timeout=first - time.time() + 5)
    check(time.time() > first - 1, f'the snooze button showed at {clock(time.time())}, before the alarm')
    sleep_until(first + REPEAT_SECONDS + 5)
    early = ctx.recorder.onsets(quiet_from, first - 0.2)
    check(not early, f'sound before the alarm, at {[clock(t) for t in early]}')
    plays = ctx.recorder.onsets(first - 0.2, time.time())
    check(len(plays) >= 1, f'no sound recorded after {clock(first)}')
    check(0 <= plays[0] - first <= 1.0,
          f'the alarm sound started at {clock(plays[0])}, not within a second of {clock(first)}')
    check(len(plays) == 2, f'{len(plays)} plays recorded, expected 2: {[clock(t) for t in plays]}')
    gap = plays[1] - plays[0]
    ctx.note(f'first alarm at {clock(first)}: plays began +{plays[0] - first:.3f} s and {gap:.3f} s later')
    check(abs(gap - REPEAT_SECONDS) <= 1.0, f'the second play came {gap:.2f} s after the first')
    check(wait_for(lambda: not showing(snooze), 5), 'the snooze button stayed after the last play')

    # Second alarm: three plays asked for, stopped after the first.
    type_into(times_box, '3', finish='Tab')
    wait_setting(folder, 'intSoundAlarmTimes', 3)
    check(time.time() < second - 2, 'changing the sound times took until the second alarm')
    snooze = app.wait_find(SNOOZE_CAPTION, 'push button', timeout=second - time.time() + 5)
    onset = wait_for(lambda: ctx.recorder.onsets(second - 0.2, time.time()), 5, 0.05)
    check(onset, f'no sound recorded after {clock(second)}')
    check(0 <= onset[0] - second <= 1.0,
          f'the second alarm started at {clock(onset[0])}, not within a second of {clock(second)}')
    ctx.note(f'second alarm at {clock(second)}: first play began +{onset[0] - second:.3f} s')
    # Let the first play finish, then stop the alarm with the flashing button.
    check(wait_for(lambda: time.time() - onset[0] > 1.0 and
                   ctx.recorder.loud_time(time.time() - 0.4, time.time()) == 0, 10, 0.05),
          'the first play of the second alarm did not end')
    pressed = time.time()
    check(click_until_gone(snooze), 'the snooze button did not go away when clicked')
    check(ctx.recorder.onsets(second - 0.2, pressed) == onset[:1], 'a second play came before the snooze')
    sleep_until(pressed + 35)
    heard = ctx.recorder.loud_time(pressed, time.time())
    check(heard == 0, f'{heard:.2f} s of sound after the snooze button was pressed at {clock(pressed)}: '
                      f'{[clock(t) for t in ctx.recorder.onsets(pressed, time.time())]}')


def click_until_gone(button, timeout=5):
    """Clicks a flashing button until it hides: a click lands only in its enabled phase."""
    deadline = time.time() + timeout
    while time.time() < deadline:
        if not showing(button):
            return True
        try:
            if enabled(button):
                click(button)
        except Failure:
            pass                       # hidden between the two looks
        time.sleep(0.1)
    return not showing(button)


def persistence(ctx):
    check('saved' in ctx.shared, 'nothing to check: the alarm scenario did not save its rows')
    folder, app, wanted = ctx.shared['saved']
    ctx.keep.remove(app)
    if not app.running():
        app = ctx.launch(folder, 'persistence-first')
    app.main()
    type_into(app.wait_find('Description 3', 'text'), 'Typed but never saved', finish='Tab')
    app.menu('Program', 'Exit')
    # How it ends is the exit scenario's business; here only the rows matter.
    check(app.wait_exit(10) is not None, 'Exit did not end the program')

    again = ctx.launch(folder, 'persistence-again')
    again.main()
    for row, (date, hhnn, what) in enumerate(wanted, start=1):
        for field, value in (('Date', date), ('Time', hhnn), ('Description', what)):
            expect_text(again.wait_find(f'{field} {row}', 'text'), value, f'after a new start {field} {row}')
    expect_text(again.wait_find('Description 3', 'text'), '', 'after a new start Description 3')


def entry_rules(ctx):
    app = ctx.launch(ctx.folder('entry'))
    app.main()
    box_of = {f'{f} {n}': app.wait_find(f'{f} {n}', 'text') for f in ('Date', 'Time') for n in (1, 2, 3)}

    type_into(box_of['Time 1'], '7:30')
    expect_text(box_of['Time 1'], '', 'Time 1 after "7:30" and Enter')
    type_into(box_of['Time 2'], '25:10', finish='Tab')
    expect_text(box_of['Time 2'], '00:10', 'Time 2 after "25:10" and leaving')
    type_into(box_of['Time 3'], 'ab07 4x5', finish=None)
    expect_text(box_of['Time 3'], '07:45', 'Time 3 while typing "ab07 4x5"')
    type_into(box_of['Date 1'], 'Feb 30, 2031', finish='Tab')
    expect_text(box_of['Date 1'], '', 'Date 1 after "Feb 30, 2031" and leaving')
    type_into(box_of['Date 2'], 'september 30 2031')
    expect_text(box_of['Date 2'], 'Sep 30, 2031', 'Date 2 after "september 30 2031" and Enter')


def menus(ctx):
    folder = ctx.folder('menus')
    app = ctx.launch(folder)
    app.main()
    cell = countdown_cell(app)

    def dark_green_share():
        shot = os.path.join(ctx.desktop.root, 'menus.png')
        ctx.desktop.screenshot(shot)
        region = pixels(shot, *extents(cell))
        return sum(1 for p in region if p == DARK_GREEN) / max(1, len(region))

    check(dark_green_share() < 0.05, 'the table window is dark green before Matrix was chosen')
    app.menu('Utilities', 'Colors', 'Matrix')
    wait_setting(folder, 'intColorPick', 1)
    check(wait_for(lambda: dark_green_share() > 0.5, 5, 0.3),
          f'after Matrix only {dark_green_share():.0%} of an empty countdown cell is rgb(0,64,0)')

    app.menu('Utilities', 'Sound', 'Sound Off')
    wait_setting(folder, 'booSound', 0)
    check(wait_for(lambda: app.find('Sound [off]', 'check box') is not None, 3),
          'the table window\'s sound switch does not read "Sound [off]"')


def countdown_cell(app):
    """Row 13's countdown cell: the empty label between its description and its buttons."""
    details = app.wait_find('Description 13', 'text')
    sound = app.wait_find('Change sound 13', 'push button')
    dx, dy, dw, dh = extents(details)
    sx = extents(sound)[0]
    for node in details.parent:
        if role(node) == 'label' and not name(node) and showing(node):
            x, y, w, h = extents(node)
            if dx + dw <= x and x + w <= sx and y <= dy + dh // 2 <= y + h:
                return node
    raise Failure('row 13 has no countdown cell')


def program_name(ctx):
    folder = ctx.folder('name')
    app = ctx.launch(folder)
    app.main()
    too_long = 'Abcdefghij' * 5 + 'K'
    new_name = 'Morning Bell'

    app.menu('Utilities', 'Change Program Name')
    ask = box(app, 'MODIFY PROGRAM NAME')
    type_into(app.wait_find('TYPE THE NAME OF YOUR PROGRAM:', 'text', within=ask), too_long, finish=None)
    app.answer(ask)
    oops = box(app, 'OOPS! YOUR PROGRAM NAME IS TOO LONG, Please Try Again...')
    shown = app.box_text(oops)
    expected = ('Your program name can only be 50 characters long, here is where it will truncate:\n'
                + too_long[:50])
    check(shown == expected, f'the too-long box says {shown!r}')
    app.answer(oops)

    ask = box(app, 'MODIFY PROGRAM NAME')
    field = app.wait_find('TYPE THE NAME OF YOUR PROGRAM:', 'text', within=ask)
    check(text_of(field) == MAIN_TITLE, f'the second question suggests {text_of(field)!r}, not the caption')
    type_into(field, new_name, finish=None)
    app.answer(ask)
    check(app.wait_window(new_name, 5, roles=('frame',)), 'the main window was not renamed')
    wait_setting(folder, 'strprogramname', new_name)
    check(app.find(new_name, 'menu item', must_show=False) is not None,
          'the Program menu\'s first command does not carry the new name')
    title = wait_for(lambda: x_title(app.pid) == new_name and new_name, 3) or x_title(app.pid)
    check(title == new_name, f'the main window\'s title on the desktop reads {title!r}, not {new_name!r}')


def single_instance(ctx):
    """A second start says so and ends, and finds the first one in front,
    even from the tray."""
    folder = ctx.folder('single')
    first = ctx.launch(folder, 'single-first')
    first.main()
    first.menu('Utilities', 'Minimize To Tray', 'Minimize To Tray Now')
    check(wait_for(lambda: not main_shown(first.pid), 5), 'the first program did not go to the tray')
    second = ctx.launch(folder, 'single-second')
    notice = box(second, 'CLICK TO END,')
    expected = (f'The application,\n{MAIN_TITLE} is already activated and running.\n'
                'You may find it on your task bar or to the bottom right within your task tray icons.')
    check(second.box_text(notice) == expected, f'the second start says {second.box_text(notice)!r}')
    check(second.window(MAIN_TITLE, roles=('frame',)) is None, 'the second start showed a main window')
    second.answer(notice)
    expect_clean_end(second, 'the answer to "CLICK TO END,"')
    check(first.running(), 'the first program ended')
    check(wait_for(lambda: main_shown(first.pid), 3), 'the second start did not bring the first window forward')


def missing_files(ctx):
    folder = ctx.folder('no-database')
    database = os.path.join(folder, 'alarmclock.mdb')
    os.remove(database)
    app = ctx.launch(folder, 'no-database')
    title = 'ERROR! DATABASE FILE NOT FOUND'
    first = box(app, title)
    check(app.box_text(first) == f'Missing the file:\n{database}',
          f'the first database box says {app.box_text(first)!r}')
    shown_title = x_title(app.pid)        # checked last, so the rest still runs
    # Either answer goes on to the second box.
    app.answer(first, 'Cancel')
    last_words = 'The program cannot continue without the database.'
    second = wait_for(lambda: next((w for w in app.windows()
                                    if name(w) == title and app.box_text(w) == last_words), None), 10)
    check(second, 'the second database box did not appear')
    check(app.window(MAIN_TITLE, roles=('frame',)) is None, 'a main window showed without the database')
    app.answer(second)
    expect_clean_end(app, 'the answer to the second database box')

    folder = ctx.folder('no-sound')
    sound = os.path.join(folder, 'alarm.wav')
    os.remove(sound)
    app = ctx.launch(folder, 'no-sound')
    first = box(app, 'DEFAULT WAV FILE NOT FOUND')
    check(app.window(MAIN_TITLE, roles=('frame',)) is None, 'the main window showed before the sound warning')
    check(app.box_text(first) == f'Missing the file:\n{sound}', f'the first sound box says {app.box_text(first)!r}')
    app.answer(first)
    second = box(app, 'ABLE TO CONTINUE...')
    check(app.box_text(second) == f'The program CAN continue without:\n{sound}',
          f'the second sound box says {app.box_text(second)!r}')
    app.answer(second)
    app.main()
    app.wait_find('Date 1', 'text')
    check(shown_title == title, f'the first database box\'s title on the desktop reads {shown_title!r}')


def seed_rows(folder, rows, times):
    """Stores rows (date, time, description, sound path) and the sound count before a start."""
    with contextlib.closing(sqlite3.connect(os.path.join(folder, 'alarmclock.mdb'))) as db, db:
        db.execute('DELETE FROM tblalarmclock')
        db.executemany('INSERT INTO tblalarmclock (dtalarmclockmmmddyyyy, dtalarmclockhhnn, stralarmclock, '
                       'strWAVEFileNamePath) VALUES (?, ?, ?, ?)', rows)
        db.execute('UPDATE tblprogramsetting SET intSoundAlarmTimes = ?', (times,))


def bad_row_and_snooze(ctx):
    """A stored time that is no time must not silence the row after it; the
    snooze pressed in the middle of a long play silences it at once."""
    folder = ctx.folder('bad-row')
    tone = os.path.join(folder, 'long.wav')
    ctx.recorder.write_tone(tone, 20)
    due = math.floor(time.time() / 60) * 60 + 60
    if due - time.time() < 15:
        due += 60
    seed_rows(folder, [('', 'ab:cd', 'not a time', ''), ('', time_text(due), 'a long song', tone)], 3)
    app = ctx.launch(folder)
    app.main()
    snooze = app.wait_find(SNOOZE_CAPTION, 'push button', timeout=due - time.time() + 5)
    onset = wait_for(lambda: ctx.recorder.onsets(due - 0.2, time.time()), 5, 0.05)
    check(onset, f'no sound recorded after {clock(due)}')
    check(0 <= onset[0] - due <= 1.0, f'the alarm started at {clock(onset[0])}, not within a second of {clock(due)}')
    sleep_until(onset[0] + 3)
    check(click_until_gone(snooze), 'the snooze button did not go away when clicked')
    pressed = time.time()
    sleep_until(pressed + 3)
    heard = ctx.recorder.loud_time(pressed + 0.5, time.time())
    tail = ctx.recorder.loud_time(pressed - 0.3, pressed + 0.5)
    ctx.note(f'sound {tail:.2f} s around the snooze, {heard:.2f} s after half a second')
    check(heard == 0, f'{heard:.2f} s of sound later than half a second after the snooze at {clock(pressed)}')


def exit_while_the_audio_server_hangs(ctx):
    """An audio server that takes the connection and never answers: the
    alarm still shows, and Exit still ends the program at once."""
    folder = ctx.folder('hung-audio')
    hung = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
    hung.bind(os.path.join(folder, 'hung-audio'))
    hung.listen(16)
    try:
        due = math.floor(time.time() / 60) * 60 + 60
        if due - time.time() < 10:
            due += 60
        seed_rows(folder, [('', time_text(due), 'hung audio', '')], 3)
        app = ctx.launch(folder, PULSE_SERVER='unix:' + os.path.join(folder, 'hung-audio'))
        app.main()
        app.wait_find(SNOOZE_CAPTION, 'push button', timeout=due - time.time() + 5)
        sleep_until(due + 1)
        pressed = time.time()
        app.menu('Program', 'Exit')
        code = app.wait_exit(5)
        ended = time.time() - pressed
        ctx.note(f'Exit during a hung play ended the program in {ended:.2f} s')
        check(code == 0, f'on Exit during a hung play the program {outcome(code)}')
        check(ended <= 2.0, f'Exit took {ended:.2f} s with the audio server hung')
    finally:
        hung.close()


def exit_program(ctx):
    tray_is_empty(ctx.desktop)
    app = ctx.launch(ctx.folder('exit'))
    app.main()
    check(wait_for(ctx.desktop.docked_icons, 10), 'no icon docked in the tray')
    app.menu('Program', 'Exit')
    code = app.wait_exit(10)
    check(code is not None, 'Exit did not end the program')
    check(wait_for(lambda: not ctx.desktop.docked_icons(), 5), 'the tray icon stayed after Exit')
    check(code == 0, f'on Exit the program {outcome(code)}')


SCENARIOS = [
    ('first-start', first_start, 60),
    ('alarm-through-interface', alarm_through_interface, 240),
    ('persistence', persistence, 60),
    ('entry-rules', entry_rules, 60),
    ('menus', menus, 60),
    ('program-name', program_name, 60),
    ('single-instance', single_instance, 60),
    ('missing-files', missing_files, 90),
    ('bad-row-and-snooze', bad_row_and_snooze, 120),
    ('exit-while-audio-hangs', exit_while_the_audio_server_hangs, 90),
    ('exit', exit_program, 60),
    *OTHER_DESKTOPS,
]
