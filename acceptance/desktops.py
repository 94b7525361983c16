"""Desktops other than the suite's own: no tray host, a StatusNotifierItem
host, an install folder the user may not write to, a notification server."""

import json
import os
import shutil
import sqlite3
import subprocess
import tempfile
import time

from desktop import descendants, stop_pids, wait_for
from ui import MAIN_TITLE, check, x_title

HERE = os.path.dirname(os.path.abspath(__file__))
TESTER = 'alarmclock-tester'


class BusService:
    """bus_services.py on the private session bus, for one scenario."""

    def __init__(self, ctx, kind):
        self.log = os.path.join(ctx.desktop.logs, f'{kind}.jsonl')
        open(self.log, 'w').close()
        self.proc = subprocess.Popen(['/usr/bin/python3', os.path.join(HERE, 'bus_services.py'), kind, self.log],
                                     env=ctx.desktop.env, stdin=subprocess.PIPE, text=True)
        check(wait_for(lambda: self.records('ready'), 10), f'the {kind} stand-in did not take its bus name')

    def records(self, key=None):
        with open(self.log) as f:
            entries = [json.loads(line) for line in f if line.strip()]
        return [e for e in entries if key is None or key in e or e.get('call') == key]

    def send(self, line):
        self.proc.stdin.write(line + '\n')
        self.proc.stdin.flush()

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        stop_pids([self.proc.pid])
        self.proc.wait(timeout=5)


def main_window_id(pid):
    """The program's main window on the X server, while it shows."""
    ids = subprocess.run(['xdotool', 'search', '--onlyvisible', '--pid', str(pid), '--name', f'^{MAIN_TITLE}$'],
                         capture_output=True, text=True).stdout.split()
    return ids[0] if ids else None


def wm_state(window):
    """'Normal', 'Iconic', or None (withdrawn: hidden by the program)."""
    out = subprocess.run(['xprop', '-id', window, 'WM_STATE'], capture_output=True, text=True).stdout
    for word in ('Normal', 'Iconic'):
        if f'window state: {word}' in out:
            return word
    return None


def no_tray_host(ctx):
    desktop = ctx.desktop
    desktop.stop_tray()
    wm = desktop.start_window_manager()
    try:
        app = ctx.launch(ctx.folder('no-tray'))
        app.main()
        window = wait_for(lambda: main_window_id(app.pid), 10)
        check(window, 'the main window has no X window')
        app.menu('Utilities', 'Minimize To Tray', 'Minimize To Tray Now')
        check(wait_for(lambda: wm_state(window) == 'Iconic', 5),
              f'after "Minimize To Tray Now" the window is {wm_state(window) or "hidden"}, not minimized')
        # What a task bar does when its button is clicked.
        subprocess.run(['xdotool', 'windowactivate', window], capture_output=True, timeout=10)
        check(wait_for(lambda: wm_state(window) == 'Normal' and x_title(app.pid) == MAIN_TITLE, 5),
              'the minimized window could not be brought back')
    finally:
        desktop.stop_part(wm)
        desktop.start_tray()


def status_notifier_host(ctx):
    """A panel of the StatusNotifierItem kind: the icon, its click, its menu
    (read over D-Bus, as such panels do); the panel's shell restarting while
    the window hides in the tray brings the window back, and the icon goes
    to the panel that comes back, whose Exit ends the program."""
    with BusService(ctx, 'watcher') as panel:
        app = ctx.launch(ctx.folder('sni'))
        app.main()
        check(wait_for(lambda: panel.records('register'), 10), 'the program registered no tray icon with the panel')
        service = panel.records('register')[-1]['service']
        panel.send(f'menu {service}')
        menu = wait_for(lambda: panel.records('menu'), 5)
        labels = [label for _, label in menu[-1]['entries']] if menu else None
        check(labels == [MAIN_TITLE, 'Cancel Menu Selection', 'Exit'], f'the tray icon\'s menu reads {labels}')
        app.menu('Utilities', 'Minimize To Tray', 'Minimize To Tray Now')
        check(wait_for(lambda: x_title(app.pid) is None, 5), 'the window did not go to the tray')
        panel.send(f'activate {service}')
        check(wait_for(lambda: x_title(app.pid) == MAIN_TITLE, 5),
              'activating the tray icon did not bring the window back')
        app.menu('Utilities', 'Minimize To Tray', 'Minimize To Tray Now')
        check(wait_for(lambda: x_title(app.pid) is None, 5), 'the window did not go to the tray again')
    check(wait_for(lambda: x_title(app.pid) == MAIN_TITLE, 5), 'the window stayed hidden after the panel went away')
    with BusService(ctx, 'watcher') as panel:
        check(wait_for(lambda: panel.records('register'), 10), 'the panel that came back got no tray icon')
        service = panel.records('register')[-1]['service']
        panel.send(f'menu {service}')
        menu = wait_for(lambda: panel.records('menu'), 5)
        exit_id = next((i for i, label in menu[-1]['entries'] if label == 'Exit'), None) if menu else None
        check(exit_id is not None, 'the tray icon\'s menu has no Exit')
        panel.send(f'click {service} {menu[-1]["path"]} {exit_id}')
        check(app.wait_exit(10) == 0, 'Exit from the tray icon\'s menu did not end the program')


def alarm_notification(ctx):
    folder = ctx.folder('notify')
    start = time.time()
    moment = (int(start // 60) + 1) * 60
    if moment - start < 8:
        moment += 60
    stamp = time.localtime(moment)
    with sqlite3.connect(os.path.join(folder, 'alarmclock.mdb')) as db:
        db.execute('UPDATE tblprogramsetting SET intSoundAlarmTimes = 3')
        db.execute('INSERT INTO tblalarmclock (dtalarmclockmmmddyyyy, dtalarmclockhhnn, stralarmclock) '
                   'VALUES (?, ?, ?)', (time.strftime('%b %d, %Y', stamp), time.strftime('%H:%M', stamp),
                                        'Take the bread out'))
    with BusService(ctx, 'notifications') as server:
        app = ctx.launch(folder)
        app.main()
        shown = wait_for(lambda: server.records('Notify'), moment - time.time() + 10)
        check(shown, 'no notification when the alarm rang')
        note = shown[-1]
        check(note['summary'].startswith('ALARM @ ') and note['body'] == 'Take the bread out'
              and note['actions'][1::2] == ['Stop'],
              f'the notification reads {note}')
        check(wait_for(lambda: ctx.recorder.loud_time(time.time() - 0.3, time.time()) > 0, 5), 'no alarm sound')
        server.send(f'invoke {note["id"]} {note["actions"][0]}')
        pressed = time.time()
        time.sleep(20)          # past the next repeat, 15 s after the first play
        heard = ctx.recorder.loud_time(pressed + 0.2, time.time())
        check(heard == 0, f'{heard:.2f} s of sound after "Stop" on the notification')
        check(server.records('CloseNotification'), 'the notification stayed after the alarm was stopped')


def read_only_install(ctx):
    """The program in a folder only root may write to, run by an ordinary user.
    That user has no way onto the suite's accessibility bus (it is root's), so
    the keyboard and the mouse do the work: the focus starts in Date 1, and
    Save sits at a fixed place in the fixed-size window."""
    if subprocess.run(['id', TESTER], capture_output=True).returncode != 0:
        subprocess.run(['useradd', '-m', TESTER], check=True, capture_output=True)
    home = os.path.expanduser(f'~{TESTER}')
    own = os.path.join(home, '.local/share/quorvel-alarmclock/alarmclock.mdb')
    shutil.rmtree(os.path.dirname(own), ignore_errors=True)
    top = tempfile.mkdtemp(prefix='alarmclock-ro-')
    install = os.path.join(top, 'quorvel-alarmclock')
    shutil.copytree(ctx.staged, install)
    for f in os.listdir(install):
        os.chmod(os.path.join(install, f), 0o755 if f == 'alarmclock' else 0o644)
    for d in (top, install):
        os.chmod(d, 0o755)
    shipped = open(os.path.join(install, 'alarmclock.mdb'), 'rb').read()
    words = 'Saved by an ordinary user'

    def start():
        log = open(os.path.join(ctx.desktop.logs, 'read-only-install.log'), 'ab')
        proc = subprocess.Popen(['runuser', '-u', TESTER, '--', 'env', '-i', f'HOME={home}',
                                 f'DISPLAY={ctx.desktop.display}', 'PATH=/usr/bin:/bin', 'LANG=C.UTF-8',
                                 'PULSE_SERVER=unix:/nonexistent', os.path.join(install, 'alarmclock')],
                                stdin=subprocess.DEVNULL, stdout=log, stderr=log, cwd='/')
        window = wait_for(lambda: subprocess.run(
            ['xdotool', 'search', '--onlyvisible', '--name', f'^{MAIN_TITLE}$'],
            capture_output=True, text=True).stdout.split(), 20)
        check(window, 'the program showed no window')
        return proc, window[0]

    def stop(proc):
        stop_pids(list(descendants([proc.pid])) + [proc.pid])
        proc.wait(timeout=5)

    def stored():
        with sqlite3.connect(f'file:{own}?mode=ro', uri=True) as db:
            return [r[0] for r in db.execute('SELECT stralarmclock FROM tblalarmclock')]

    try:
        proc, window = start()
        try:
            check(os.path.exists(own), f'no database was made in {own}')
            time.sleep(1)
            xdo = ['xdotool', 'key', '--window', window]
            subprocess.run(xdo + ['Tab'], check=True)
            subprocess.run(['xdotool', 'type', '--window', window, '07:30'], check=True)
            subprocess.run(xdo + ['Tab'], check=True)
            subprocess.run(['xdotool', 'type', '--window', window, words], check=True)
            subprocess.run(xdo + ['Tab'], check=True)
            geometry = subprocess.run(['xdotool', 'getwindowgeometry', '--shell', window],
                                      capture_output=True, text=True).stdout
            at = dict(line.split('=') for line in geometry.split())
            subprocess.run(['xdotool', 'mousemove', str(int(at['X']) + 424), str(int(at['Y']) + 591),
                            'click', '1'], check=True)
            check(wait_for(lambda: words in stored(), 5), f'Save stored {stored()} in {own}')
        finally:
            stop(proc)
        proc, window = start()
        try:
            ctx.desktop.screenshot(os.path.join(ctx.desktop.logs, 'read-only-install.png'))
            check(words in stored(), 'the alarm was lost on a new start')
        finally:
            stop(proc)
        check(open(os.path.join(install, 'alarmclock.mdb'), 'rb').read() == shipped,
              'the shipped database changed')
    finally:
        shutil.rmtree(top, ignore_errors=True)


SCENARIOS = [
    ('no-tray-host', no_tray_host, 60),
    ('status-notifier-host', status_notifier_host, 60),
    ('read-only-install', read_only_install, 180),
    ('alarm-notification', alarm_notification, 150),
]
