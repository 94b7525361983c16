"""An alarm that is always heard and can always be stopped: a database held
by another program, a question box left open, Stop in the last play, a
missing sound file, a tray host that goes away."""

import math
import os
import sqlite3
import time

from desktop import wait_for
from scenarios import SNOOZE_CAPTION, box, check, click_until_gone, clock, seed_rows, sleep_until, time_text
from ui import click, main_shown, name, role

ONSET_SLACK = 1.5


def next_minute(lead):
    """The first minute boundary at least `lead` seconds away."""
    due = math.floor(time.time() / 60) * 60 + 60
    return due + 60 if due - time.time() < lead else due


def boxes(app):
    return [name(w) for w in app.windows() if role(w) in ('alert', 'dialog')]


def held_database_and_a_missing_sound(ctx):
    """Another program holds the database across the alarm second, and the
    row's sound file is gone: the default sound starts at once, no box opens,
    the sound stays on, and the row a minute later rings too."""
    folder = ctx.folder('held-database')
    gone = os.path.join(folder, 'unplugged-usb-disk.wav')
    due = next_minute(12)
    seed_rows(folder, [('', time_text(due), 'held and gone', gone), ('', time_text(due + 60), 'a minute later', gone)], 1)
    app = ctx.launch(folder)
    app.main()
    sleep_until(due - 3)
    holder = sqlite3.connect(os.path.join(folder, 'alarmclock.mdb'), isolation_level=None)
    try:
        holder.execute('BEGIN EXCLUSIVE')
        onset = wait_for(lambda: ctx.recorder.onsets(due - 0.2, time.time()), 5, 0.05)
        check(onset, f'no sound after {clock(due)} while the database was held')
        ctx.note(f'the sound began {onset[0] - due:+.3f} s from the alarm second, the database held')
        check(onset[0] - due <= 2.0, f'the alarm sounded at {clock(onset[0])}, over 2 s after {clock(due)}')
        sleep_until(due + 4)
        check(not boxes(app), f'a box opened at the alarm: {boxes(app)}')
    finally:
        holder.close()
    check(app.find('Sound [on]', 'check box') is not None, 'the missing file turned the sound off')
    onset = wait_for(lambda: ctx.recorder.onsets(due + 59.8, time.time()), due + 66 - time.time(), 0.05)
    check(onset and onset[0] - (due + 60) <= 1.0, f'the row a minute later did not ring: {onset}')


def question_box_left_open(ctx):
    """A question box the user leaves open neither delays nor drops a play."""
    folder = ctx.folder('question-open')
    due = next_minute(15)
    seed_rows(folder, [('', time_text(due), 'four plays', ''), ('', '', 'a row to clear', '')], 4)
    app = ctx.launch(folder)
    app.main()
    click(app.wait_find('Clear row 2', 'push button'))
    question = box(app, 'CLEAR THE ROW: ARE YOU SURE?')
    sleep_until(due + 3 * 15 + 5)
    plays = ctx.recorder.onsets(due - 0.2, time.time())
    ctx.note(f'plays at {[f"{t - due:+.2f}" for t in plays]} s with the box open')
    check(len(plays) == 4, f'{len(plays)} plays with the box open, expected 4: {[clock(t) for t in plays]}')
    for n, t in enumerate(plays):
        check(abs(t - due - 15 * n) <= ONSET_SLACK, f'play {n + 1} began at {t - due:+.2f} s, not {15 * n} s')
    check(boxes(app), 'the question box did not stay open')
    app.answer(question, 'No')


def stop_in_the_last_play(ctx):
    """Stop pressed while the last play of a 10 s sound sounds silences it."""
    folder = ctx.folder('last-play')
    tone = os.path.join(folder, 'ten-seconds.wav')
    ctx.recorder.write_tone(tone, 10)
    due = next_minute(10)
    seed_rows(folder, [('', time_text(due), 'two long plays', tone)], 2)
    app = ctx.launch(folder)
    app.main()
    snooze = app.wait_find(SNOOZE_CAPTION, 'push button', timeout=due - time.time() + 5)
    sleep_until(due + 15 + 2)
    check(ctx.recorder.loud_time(time.time() - 0.5, time.time()) > 0, 'the last play is not sounding')
    check(app.find('turn off? 0 alarms to play', 'push button') is not None, 'the button is gone in the last play')
    check(click_until_gone(snooze), 'the button did not go away when clicked')
    pressed = time.time()
    sleep_until(pressed + 3)
    tail = ctx.recorder.loud_time(pressed + 0.5, time.time())
    ctx.note(f'{ctx.recorder.loud_time(pressed, pressed + 0.5):.2f} s of sound in the half second after Stop')
    check(tail == 0, f'{tail:.2f} s of the last play after Stop at {clock(pressed)}')


def tray_host_comes_and_goes(ctx):
    """The window hidden in the tray comes back when the tray host goes away;
    a tray host that starts later shows the icon again."""
    desktop = ctx.desktop
    app = ctx.launch(ctx.folder('tray-lost'))
    app.main()
    check(wait_for(desktop.docked_icons, 10), 'no icon docked in the tray')
    app.menu('Utilities', 'Minimize To Tray', 'Minimize To Tray Now')
    check(wait_for(lambda: not main_shown(app.pid), 5), 'the window did not go to the tray')
    desktop.stop_tray()
    gone = time.time()
    back = wait_for(lambda: main_shown(app.pid), 8, 0.1)
    ctx.note(f'the window was mapped again {time.time() - gone:.1f} s after the tray host ended')
    check(back and time.time() - gone <= 5, 'the window did not come back within 5 s of the tray host ending')
    desktop.start_tray()
    check(wait_for(desktop.docked_icons, 5), 'a tray host started later got no icon')


SCENARIOS = [
    ('held-database-missing-sound', held_database_and_a_missing_sound, 150),
    ('question-box-left-open', question_box_left_open, 150),
    ('stop-in-the-last-play', stop_in_the_last_play, 120),
    ('tray-host-comes-and-goes', tray_host_comes_and_goes, 60),
]
