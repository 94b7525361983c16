"""A sleep the program learns of from logind: a mock logind on a private
system bus, a mock notification server, and a clock moved two hours on while
the program is stopped (libfaketime), as a suspend would move it."""

import os
import signal
import subprocess
import tempfile
import time

import dbus

from desktop import stop_pids, wait_for
from desktops import BusService
from scenarios import date_text, seed_rows, time_text
from ui import check

FAKETIME = '/usr/lib/x86_64-linux-gnu/faketime/libfaketime.so.1'
LOGIN = 'org.freedesktop.login1'
MANAGER = 'org.freedesktop.login1.Manager'


class MockLogind:
    """A bus of its own standing in for the system bus, with dbusmock's logind on it."""

    def __init__(self, ctx):
        self.socket = os.path.join(tempfile.mkdtemp(prefix='system-bus-', dir=ctx.work), 'bus')
        self.address = f'unix:path={self.socket}'
        self.procs = [subprocess.Popen(['dbus-daemon', '--session', '--nofork', f'--address={self.address}'],
                                       stdout=subprocess.DEVNULL)]
        check(wait_for(lambda: os.path.exists(self.socket), 10), 'the private system bus did not start')
        env = dict(os.environ, DBUS_SYSTEM_BUS_ADDRESS=self.address)
        self.procs.append(subprocess.Popen(['/usr/bin/python3', '-m', 'dbusmock', '--system', '--template', 'logind'],
                                           env=env, stdout=subprocess.DEVNULL))
        self.bus = dbus.bus.BusConnection(self.address)
        check(wait_for(lambda: self.bus.name_has_owner(LOGIN), 10), 'the mock logind did not start')
        self.logind = self.bus.get_object(LOGIN, '/org/freedesktop/login1')

    def our_locks(self):
        return [i for i in self.logind.ListInhibitors(dbus_interface=MANAGER)
                if i[0] == 'sleep' and i[3] == 'delay' and 'Alarm Clock' in i[1]]

    def prepare_for_sleep(self, sleeping):
        self.logind.EmitSignal(MANAGER, 'PrepareForSleep', 'b', [sleeping],
                               dbus_interface='org.freedesktop.DBus.Mock')

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.bus.close()
        stop_pids([p.pid for p in reversed(self.procs)])


def missed_after_sleep(ctx):
    """The lock is held while awake, let go within a second of the sleep, and
    taken again after; two rows two hours asleep are listed once, silently."""
    folder = ctx.folder('sleep')
    offset = os.path.join(folder, 'faketime')
    with open(offset, 'w') as f:
        f.write('+0\n')
    start = time.time()
    soon, later = start + 1800, start + 3600
    seed_rows(folder, [(date_text(soon), time_text(soon), 'Stand-up meeting', ''),
                       ('', time_text(later), 'Feed the cat', '')], 3)
    with MockLogind(ctx) as logind, BusService(ctx, 'notifications') as server:
        app = ctx.launch(folder, QT_QPA_PLATFORM='offscreen', DBUS_SYSTEM_BUS_ADDRESS=logind.address,
                         LD_PRELOAD=FAKETIME, FAKETIME_TIMESTAMP_FILE=offset, FAKETIME_NO_CACHE='1',
                         FAKETIME_DONT_FAKE_MONOTONIC='1')
        check(wait_for(logind.our_locks, 15), 'the program took no sleep lock from logind')
        time.sleep(3)       # its table loaded and ticking (the lock comes first)

        logind.prepare_for_sleep(True)
        asked = time.monotonic()
        check(wait_for(lambda: not logind.our_locks(), 1, 0.02), 'the sleep lock was held past a second')
        ctx.note(f'the lock went {time.monotonic() - asked:.2f} s after PrepareForSleep(true)')

        os.kill(app.pid, signal.SIGSTOP)
        with open(offset, 'w') as f:
            f.write('+7200\n')
        os.kill(app.pid, signal.SIGCONT)
        logind.prepare_for_sleep(False)

        missed = wait_for(lambda: [n for n in server.records('Notify') if n['summary'] == 'Missed alarms'], 10)
        check(missed, 'no "Missed alarms" notification after the sleep')
        lines = missed[-1]['body'].split('\n')
        wanted = [f'{time_text(soon)} Stand-up meeting', f'{time_text(later)} Feed the cat']
        check(sorted(lines) == sorted(wanted), f'the missed alarms read {lines}')
        check(wait_for(logind.our_locks, 5), 'the sleep lock was not taken again after the resume')
        check(len(logind.our_locks()) == 1, f'the program holds {len(logind.our_locks())} sleep locks')
        rang = [n for n in server.records('Notify') if n['summary'].startswith('ALARM')]
        check(not rang, f'a missed alarm rang: {rang}')


SCENARIOS = [
    ('missed-after-sleep', missed_after_sleep, 90),
]
