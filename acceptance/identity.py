"""How the desktop knows the program: its window's class matches the
desktop entry, and it takes no part in session save and restore."""

import os
import re
import socket
import subprocess
import time

from desktop import wait_for
from desktops import main_window_id
from ui import check

ENTRY = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'assets', 'quorvel-alarmclock.desktop.in')


def window_class_matches_the_entry(ctx):
    """Docks group the window with its launcher by the entry's StartupWMClass."""
    wanted = re.search(r'^StartupWMClass=(.*)$', open(ENTRY).read(), re.M)
    check(wanted, 'the desktop entry has no StartupWMClass')
    app = ctx.launch(ctx.folder('identity'))
    app.main()
    window = wait_for(lambda: main_window_id(app.pid), 10)
    check(window, 'the main window has no X window')
    classes = re.findall(r'"([^"]*)"', subprocess.run(['xprop', '-id', window, 'WM_CLASS'], capture_output=True,
                                                       text=True).stdout)
    check(wanted.group(1) in classes, f'WM_CLASS is {classes}, the entry names {wanted.group(1)!r}')


def no_part_in_session_restore(ctx):
    """With a session manager there, the program never registers with it, so a
    restored session does not start it a second time."""
    folder = ctx.folder('session')
    path = os.path.join(folder, 'ice')
    manager = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
    manager.bind(path)
    manager.listen(4)
    manager.setblocking(False)
    try:
        app = ctx.launch(folder, SESSION_MANAGER=f'local/{socket.gethostname()}:{path}')
        app.main()
        time.sleep(2)
        try:
            manager.accept()
            check(False, 'the program registered with the session manager')
        except BlockingIOError:
            pass
    finally:
        manager.close()


SCENARIOS = [
    ('window-class', window_class_matches_the_entry, 60),
    ('no-session-restore', no_part_in_session_restore, 60),
]
