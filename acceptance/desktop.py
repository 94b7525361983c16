"""A private desktop for one run of the suite: X server, session bus, tray
host and audio server, each started here and stopped here by process id."""

import os
import re
import select
import shutil
import signal
import subprocess
import tempfile
import time

from audio import Recorder


def descendants(root_pids):
    """Process ids below the given ones (children, grandchildren...)."""
    parent_of = {}
    for entry in os.listdir('/proc'):
        if not entry.isdigit():
            continue
        try:
            with open(f'/proc/{entry}/stat') as f:
                stat = f.read()
        except OSError:
            continue
        # The command name may hold blanks and parentheses; fields follow the last ')'.
        fields = stat[stat.rfind(')') + 2:].split()
        parent_of[int(entry)] = int(fields[1])
    found, frontier = set(), set(root_pids)
    while frontier:
        children = {pid for pid, ppid in parent_of.items() if ppid in frontier and pid not in found}
        found |= children
        frontier = children
    return found


def alive(pid):
    try:
        with open(f'/proc/{pid}/stat') as f:
            state = f.read().rsplit(')', 1)[1].split()[0]
        return state != 'Z'
    except OSError:
        return False


def stop_pids(pids, grace=3.0):
    """TERM, then KILL what is still there after the grace period."""
    pids = [p for p in pids if alive(p)]
    for pid in pids:
        try:
            os.kill(pid, signal.SIGTERM)
        except ProcessLookupError:
            pass
    deadline = time.monotonic() + grace
    while time.monotonic() < deadline and any(alive(p) for p in pids):
        time.sleep(0.05)
    for pid in pids:
        if alive(pid):
            try:
                os.kill(pid, signal.SIGKILL)
            except ProcessLookupError:
                pass


def wait_for(condition, timeout, interval=0.1):
    """Polls until condition() is truthy; returns its last value."""
    deadline = time.monotonic() + timeout
    while True:
        value = condition()
        if value or time.monotonic() >= deadline:
            return value
        time.sleep(interval)


class Desktop:
    WIDTH, HEIGHT = 1280, 900
    TRAY_WIDTH, TRAY_HEIGHT = 120, 28

    def __init__(self):
        self.root = tempfile.mkdtemp(prefix='alarmclock-accept-')
        self.runtime = os.path.join(self.root, 'runtime')
        self.home = os.path.join(self.root, 'home')
        os.makedirs(self.runtime, mode=0o700)
        os.makedirs(self.home)
        self.logs = os.path.join(self.root, 'logs')
        os.makedirs(self.logs)
        self.procs = []          # (name, Popen), in start order
        self.tray = None
        self.recorder = None
        self.display = None
        self.env = None

    # -- starting ---------------------------------------------------------

    def _spawn(self, name, argv, **kwargs):
        log = open(os.path.join(self.logs, f'{name}.log'), 'ab')
        kwargs.setdefault('stdout', log)
        kwargs.setdefault('stderr', log)
        proc = subprocess.Popen(argv, env=self.env, stdin=subprocess.DEVNULL, **kwargs)
        self.procs.append((name, proc))
        return proc

    def start(self):
        self.env = {
            'PATH': '/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin',
            'HOME': self.home,
            'XDG_RUNTIME_DIR': self.runtime,
            'LANG': 'C.UTF-8',
            'LC_ALL': 'C.UTF-8',
            'TZ': os.environ.get('TZ', ':/etc/localtime'),
        }
        self._start_x()
        self._start_bus()
        self._start_audio()
        self.start_tray()
        # Everything in this process (AT-SPI, xdotool, import) uses the private stack.
        os.environ.update(self.env)

    def _start_x(self):
        read_end, write_end = os.pipe()
        self._spawn('xvfb', ['Xvfb', '-displayfd', str(write_end), '-screen', '0',
                             f'{self.WIDTH}x{self.HEIGHT}x24', '-nolisten', 'tcp'],
                    pass_fds=(write_end,))
        os.close(write_end)
        number = b''
        deadline = time.monotonic() + 15
        while not number.endswith(b'\n') and time.monotonic() < deadline:
            if not select.select([read_end], [], [], 0.5)[0]:
                continue
            chunk = os.read(read_end, 16)
            if not chunk:
                break
            number += chunk
        os.close(read_end)
        if not number.strip():
            raise RuntimeError('Xvfb did not report a display number')
        self.display = ':' + number.decode().strip()
        self.env['DISPLAY'] = self.display

    def _start_bus(self):
        proc = self._spawn('dbus', ['dbus-daemon', '--session', '--nofork', '--nopidfile',
                                    '--address=unix:path=' + os.path.join(self.runtime, 'bus'),
                                    '--print-address=1'], stdout=subprocess.PIPE)
        address = proc.stdout.readline().decode().strip()
        if not address:
            raise RuntimeError('the session bus did not start')
        self.env['DBUS_SESSION_BUS_ADDRESS'] = address
        self.bus_pid = proc.pid

    def _start_audio(self):
        pulse_dir = os.path.join(self.runtime, 'pulse')
        self.env['PULSE_RUNTIME_PATH'] = pulse_dir
        self.env['PULSE_SERVER'] = 'unix:' + os.path.join(pulse_dir, 'native')
        self._spawn('pulseaudio', ['pulseaudio', '-n', '--daemonize=no', '--exit-idle-time=-1',
                                   '--log-target=stderr',
                                   '-L', 'module-null-sink sink_name=test',
                                   '-L', 'module-native-protocol-unix',
                                   '-L', 'module-always-sink'])
        ok = wait_for(lambda: subprocess.run(['pactl', 'info'], env=self.env, capture_output=True)
                      .returncode == 0, 15, 0.2)
        if not ok:
            raise RuntimeError('PulseAudio did not come up')
        subprocess.run(['pactl', 'set-default-sink', 'test'], env=self.env, check=True,
                       capture_output=True)
        self.recorder = Recorder(self.env, self.logs)
        self.procs.append(('parec', self.recorder.start()))
        self._warm_audio()

    def _warm_audio(self):
        # The monitor streams silence as soon as the recorder is connected.
        if not wait_for(self.recorder.receiving, 10):
            raise RuntimeError('the recorder gets no data from the null sink')
        # A fresh server holds its very first stream back for about 1.5 s;
        # play until a sound is heard, so the program's first play is not held.
        tone = os.path.join(self.root, 'warm.wav')
        Recorder.write_tone(tone, seconds=0.2)
        with open(os.path.join(self.logs, 'paplay.log'), 'ab') as log:
            for _ in range(3):
                played = time.time()
                subprocess.run(['paplay', tone], env=self.env, timeout=20, stdout=log, stderr=log)
                if wait_for(lambda: self.recorder.onsets(played, time.time()), 3):
                    return
        raise RuntimeError('the warm-up sound never reached the recorder')

    def start_tray(self):
        self.tray = self._spawn('trayer', ['trayer', '--edge', 'top', '--align', 'right',
                                           '--widthtype', 'pixel', '--width', str(self.TRAY_WIDTH),
                                           '--heighttype', 'pixel', '--height', str(self.TRAY_HEIGHT),
                                           '--transparent', 'false', '--tint', '0x888888'])
        if not wait_for(self.tray_window, 10):
            raise RuntimeError('trayer did not map its window')

    def stop_tray(self):
        """Takes the tray host away, as on a desktop that has none."""
        self.procs = [(n, p) for n, p in self.procs if p is not self.tray]
        stop_pids([self.tray.pid])
        self.tray.wait(timeout=5)
        self.tray = None

    def start_window_manager(self):
        """A window manager, for scenarios that minimize and restore windows
        as a task bar does; stop it with stop_part()."""
        proc = self._spawn('openbox', ['openbox', '--sm-disable'])
        wait_for(lambda: subprocess.run(['xprop', '-root', '_NET_SUPPORTING_WM_CHECK'], env=self.env,
                                        capture_output=True, text=True).stdout.count('window id') > 0, 10)
        return proc

    def start_weston(self):
        """A Wayland compositor with no screen, input, tray or notification
        server; its socket is WAYLAND_DISPLAY=wl-test. Stop it with stop_part()."""
        proc = self._spawn('weston', ['weston', '--backend=headless-backend.so', '--socket=wl-test', '--idle-time=0'])
        if not wait_for(lambda: os.path.exists(os.path.join(self.runtime, 'wl-test')), 10):
            raise RuntimeError('weston did not open its socket')
        return proc

    def stop_part(self, proc):
        self.procs = [(n, p) for n, p in self.procs if p is not proc]
        stop_pids([proc.pid])
        proc.wait(timeout=5)

    # -- tray -------------------------------------------------------------

    def tray_window(self):
        """Trayer's top-level window id, or None."""
        out = subprocess.run(['xdotool', 'search', '--onlyvisible', '--pid', str(self.tray.pid)],
                             env=self.env, capture_output=True, text=True).stdout.split()
        return int(out[0]) if out else None

    def docked_icons(self):
        """Windows embedded in the tray host that are at least icon sized."""
        window = self.tray_window()
        if window is None:
            return []
        tree = subprocess.run(['xwininfo', '-tree', '-id', str(window)], env=self.env,
                              capture_output=True, text=True).stdout
        return [line.strip() for line in tree.splitlines()
                if line.strip().startswith('0x') and _size(line) >= (8, 8)]

    # -- health and stopping ----------------------------------------------

    def dead_parts(self):
        return [name for name, proc in self.procs if proc.poll() is not None]

    def strays(self):
        """Processes still running with this desktop's environment."""
        marker = f'XDG_RUNTIME_DIR={self.runtime}'.encode()
        found = []
        for entry in os.listdir('/proc'):
            if not entry.isdigit() or int(entry) == os.getpid():
                continue
            try:
                with open(f'/proc/{entry}/environ', 'rb') as f:
                    if marker in f.read().split(b'\0'):
                        found.append(int(entry))
            except OSError:
                pass
        return found

    def screenshot(self, path):
        subprocess.run(['import', '-window', 'root', path], env=self.env, timeout=30,
                       capture_output=True)

    def stop(self, keep_logs_in=None):
        if self.recorder:
            self.recorder.stop()
        started = [proc.pid for _, proc in self.procs]
        stop_pids(list(descendants(started)))
        stop_pids(list(reversed(started)))
        # The bus starts the accessibility services detached from itself; they
        # carry this desktop's private runtime folder in their environment.
        stop_pids(self.strays())
        for _, proc in self.procs:
            try:
                proc.wait(timeout=5)
            except subprocess.TimeoutExpired:
                pass
        if keep_logs_in:
            shutil.copytree(self.logs, keep_logs_in, dirs_exist_ok=True)
        shutil.rmtree(self.root, ignore_errors=True)


def _size(xwininfo_line):
    """(width, height) from an xwininfo -tree line such as '0x26 (has no name): ()  22x26+97+1  +1257+1'."""
    match = re.search(r'\s(\d+)x(\d+)[+-]', xwininfo_line)
    return (int(match.group(1)), int(match.group(2))) if match else (0, 0)
