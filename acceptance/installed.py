"""The Debian package installed as users install software, and the program
run from it by an ordinary user: it starts, rings, and Stop ends the alarm.
That user has no way onto the suite's accessibility bus or its sound server
(both are root's), so the mouse and the screen's pixels do the work."""

import contextlib
import os
import shutil
import sqlite3
import subprocess
import time

from desktop import descendants, stop_pids, wait_for
from desktops import TESTER
from ringing import next_minute
from scenarios import sleep_until, time_text
from ui import MAIN_TITLE, check, pixels

APT = dict(os.environ, DEBIAN_FRONTEND='noninteractive')
SNOOZE_AT = (700, 590)  # inside the flashing button, from the window's corner


def installed_package(ctx):
    check(ctx.deb and os.path.exists(ctx.deb), f'no package to install: {ctx.deb}')
    if subprocess.run(['id', TESTER], capture_output=True).returncode != 0:
        subprocess.run(['useradd', '-m', TESTER], check=True, capture_output=True)
    home = os.path.expanduser(f'~{TESTER}')
    # The machine is shared: an install someone else broke off leaves dpkg
    # "interrupted" and apt refuses everything, and an earlier build of the
    # same version must not stand in for this one.
    subprocess.run(['dpkg', '--configure', '-a'], capture_output=True, env=APT)
    apt = subprocess.run(['apt-get', 'install', '-y', '-qq', '--no-install-recommends', '--reinstall',
                          '-o', 'DPkg::Lock::Timeout=60', ctx.deb], capture_output=True, text=True, env=APT)
    check(apt.returncode == 0, f'apt-get could not install the package: {apt.stderr.strip() or apt.stdout.strip()}')
    proc = None
    try:
        own = os.path.join(home, '.local/share/quorvel-alarmclock/alarmclock.mdb')
        shutil.rmtree(os.path.dirname(own), ignore_errors=True)
        os.makedirs(os.path.dirname(own))
        shutil.copy('/usr/lib/quorvel-alarmclock/alarmclock.mdb', own)
        due = next_minute(15)
        with contextlib.closing(sqlite3.connect(own)) as db, db:
            db.execute('UPDATE tblprogramsetting SET intSoundAlarmTimes = 3')
            db.execute('INSERT INTO tblalarmclock (dtalarmclockhhnn, stralarmclock) VALUES (?, ?)',
                       (time_text(due), 'from the package'))
        subprocess.run(['chown', '-R', f'{TESTER}:', os.path.join(home, '.local')], check=True)
        log = open(os.path.join(ctx.desktop.logs, 'installed-package.log'), 'ab')
        proc = subprocess.Popen(['runuser', '-u', TESTER, '--', 'env', '-i', f'HOME={home}',
                                 f'DISPLAY={ctx.desktop.display}', 'PATH=/usr/bin:/bin', 'LANG=C.UTF-8',
                                 'PULSE_SERVER=unix:/nonexistent', '/usr/bin/quorvel-alarmclock'],
                                stdin=subprocess.DEVNULL, stdout=log, stderr=log, cwd='/')
        window = wait_for(lambda: subprocess.run(['xdotool', 'search', '--onlyvisible', '--name', f'^{MAIN_TITLE}$'],
                                                 capture_output=True, text=True).stdout.split(), 20)
        check(window, 'the installed program showed no window')
        geometry = subprocess.run(['xdotool', 'getwindowgeometry', '--shell', window[0]],
                                  capture_output=True, text=True).stdout
        at = dict(line.split('=') for line in geometry.split())
        x, y = int(at['X']) + SNOOZE_AT[0], int(at['Y']) + SNOOZE_AT[1]
        shot = os.path.join(ctx.desktop.root, 'installed.png')

        def flashing():             # a red of either phase, where the panel is grey
            ctx.desktop.screenshot(shot)
            red, green, _ = pixels(shot, x, y, 1, 1)[0]
            return red - green > 15

        check(not flashing(), 'the stop button shows before the alarm')
        sleep_until(due)
        check(wait_for(flashing, 5, 0.2), 'no flashing stop button at the alarm')
        for _ in range(20):             # a click lands only in the clickable phase
            subprocess.run(['xdotool', 'mousemove', str(x), str(y), 'click', '1'], check=True)
            time.sleep(0.25)
            if not flashing() and not wait_for(flashing, 1, 0.2):
                break
        check(not flashing(), 'Stop did not end the alarm')
    finally:
        if proc:
            stop_pids(list(descendants([proc.pid])) + [proc.pid])
        subprocess.run(['apt-get', 'remove', '-y', '-qq', '-o', 'DPkg::Lock::Timeout=60', 'quorvel-alarmclock'], capture_output=True, env=APT)


SCENARIOS = [
    ('installed-package', installed_package, 180),
]
