"""The program on Wayland (weston, headless): its app id, a pop-up that
brings a minimized window back, and a tray panel that starts after it."""

import contextlib
import os
import sqlite3

from desktop import wait_for
from desktops import BusService
from ringing import next_minute
from scenarios import seed_rows, sleep_until, time_text
from ui import check

NATIVE = {'QT_QPA_PLATFORM': 'wayland', 'WAYLAND_DISPLAY': 'wl-test'}


@contextlib.contextmanager
def weston(ctx):
    proc = ctx.desktop.start_weston()
    try:
        yield
    finally:
        ctx.stop_apps()
        ctx.desktop.stop_part(proc)


def app_id_and_pop_up(ctx):
    """The toplevel carries the desktop entry's name; an alarm with the pop-up
    on shows a window that was minimized as a new toplevel, since Wayland has
    no request to restore one."""
    with weston(ctx):
        folder = ctx.folder('wayland-pop-up')
        due = next_minute(15)
        seed_rows(folder, [('', time_text(due), 'on Wayland', '')], 1)
        with contextlib.closing(sqlite3.connect(os.path.join(folder, 'alarmclock.mdb'))) as db, db:
            db.execute('UPDATE tblprogramsetting SET booAlarmPopupForm = 1')
        app = ctx.launch(folder, WAYLAND_DEBUG='client', **NATIVE)
        app.main()
        log = lambda: open(app.log, errors='replace').read()
        check('set_app_id("quorvel-alarmclock")' in log(), 'the toplevel has not the app id "quorvel-alarmclock"')
        app.menu('Utilities', 'Minimize To Tray', 'Minimize To Tray Now')
        check(wait_for(lambda: 'set_minimized()' in log(), 5), 'the window was not minimized')
        toplevels = log().count('.get_toplevel(')
        sleep_until(due + 3)
        check(log().count('.get_toplevel(') > toplevels, 'the alarm did not show the minimized window anew')


def late_tray_panel(ctx):
    """On Wayland the tray is a panel's alone; one that starts after the
    program (as at login) still gets its icon."""
    with weston(ctx):
        app = ctx.launch(ctx.folder('wayland-late-tray'), **NATIVE)
        app.main()
        with BusService(ctx, 'watcher') as panel:
            check(wait_for(lambda: panel.records('register'), 10), 'the panel that started later got no tray icon')


SCENARIOS = [
    ('wayland-app-id-and-pop-up', app_id_and_pop_up, 150),
    ('wayland-late-tray-panel', late_tray_panel, 60),
]
