"""Measures the real program on a private desktop (the acceptance suite's
stack: Xvfb, tray host, session bus, PulseAudio null sink) and prints a table.

    /usr/bin/python3 bench/run.py STAGED_APP_DIR [--tick-minutes N] [--trips N] [--quick]
"""

import argparse
import os
import re
import statistics
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, '..', 'acceptance'))

from desktop import Desktop, stop_pids, wait_for  # noqa: E402
import ui  # noqa: E402

ROW13_NUMBER = None  # filled from the first window found


def proc_stat(pid):
    """(cpu seconds, context switches, resident MB) of a process, all threads.
    CPU time comes from the scheduler's own nanosecond count: the tick-sampled
    figures in /proc/PID/stat over- or under-count a process that wakes
    briefly once a second."""
    cpu, switches = 0.0, 0
    for task in os.listdir(f'/proc/{pid}/task'):
        try:
            with open(f'/proc/{pid}/task/{task}/schedstat') as f:
                run_ns, _, _ = f.read().split()
            cpu += int(run_ns) / 1e9
            with open(f'/proc/{pid}/task/{task}/status') as f:
                for line in f:
                    if line.startswith(('voluntary_ctxt_switches', 'nonvoluntary_ctxt_switches')):
                        switches += int(line.split()[1])
        except OSError:
            pass  # a thread that ended meanwhile
    rss = 0.0
    with open(f'/proc/{pid}/status') as f:
        for line in f:
            if line.startswith('VmRSS'):
                rss = int(line.split()[1]) / 1024
    return cpu, switches, rss


def iconify(desktop, window):
    """Minimizes a window as a window manager would: this desktop has none,
    so mark it Iconic in WM_STATE, which is what Qt listens for."""
    from Xlib import display
    screen = display.Display(desktop.display)
    target = screen.create_resource_object('window', window)
    wm_state = screen.intern_atom('WM_STATE')
    target.change_property(wm_state, wm_state, 32, [3, 0])
    screen.sync()
    screen.close()


def percentile(values, p):
    ordered = sorted(values)
    k = max(0, min(len(ordered) - 1, round(p / 100 * (len(ordered) - 1))))
    return ordered[k]


# Every fresh folder lives below one that goes when the bench ends.
FOLDERS = tempfile.TemporaryDirectory(prefix='alarmclock-bench-')


def prepare_folder(staged, rows=(), times=1):
    """A fresh application folder; rows are (date or None, 'hh:nn', text)."""
    import sqlite3
    folder = ui.fresh_copy(staged, tempfile.mkdtemp(dir=FOLDERS.name))
    with sqlite3.connect(os.path.join(folder, 'alarmclock.mdb')) as db:
        db.execute('UPDATE tblprogramsetting SET intSoundAlarmTimes = ?', (times,))
        db.executemany('INSERT INTO tblalarmclock (dtalarmclockmmmddyyyy, dtalarmclockhhnn, stralarmclock) '
                       'VALUES (?, ?, ?)', rows)
    return folder


def launch(desktop, folder, accessible=False):
    env = dict(desktop.env)
    if accessible:
        env['QT_LINUX_ACCESSIBILITY_ALWAYS_ON'] = '1'
    log = open(os.path.join(desktop.logs, 'bench-app.log'), 'ab')
    return subprocess.Popen([os.path.join(folder, 'alarmclock')], env=env, cwd=desktop.home,
                            stdin=subprocess.DEVNULL, stdout=log, stderr=log)


def visible_window(pid):
    """The program's main window if it is on screen. The docked tray icon is
    a small window of the same name, and is not it."""
    out = subprocess.run(['xdotool', 'search', '--onlyvisible', '--pid', str(pid), '--name',
                          ui.MAIN_TITLE], capture_output=True, text=True).stdout.split()
    for window in out:
        shape = subprocess.run(['xdotool', 'getwindowgeometry', '--shell', window],
                               capture_output=True, text=True).stdout
        size = dict(line.split('=', 1) for line in shape.split() if '=' in line)
        if int(size.get('WIDTH', 0)) > 200 and int(size.get('HEIGHT', 0)) > 200:
            return int(window)
    return None


# -- start-up ---------------------------------------------------------------

def measure_startup(desktop, staged, runs):
    """Exec to the main window mapped, and to the first paint of the last row
    (row 13's purple number on screen)."""
    from Xlib import X, display
    screen = display.Display(desktop.display)
    root = screen.screen().root
    mapped, painted = [], []
    for _ in range(runs):
        folder = prepare_folder(staged)
        start = time.monotonic()
        proc = launch(desktop, folder)
        window = wait_for(lambda: visible_window(proc.pid), 10, 0.002)
        t_mapped = time.monotonic() - start
        # Row 13's number: a purple pixel in the left column of the last row.
        source = screen.create_resource_object('window', window)

        def purple_row13():
            try:
                origin = source.translate_coords(root, 0, 0)
                image = root.get_image(-origin.x + 4, -origin.y + 470, 40, 60, X.ZPixmap, 0xFFFFFFFF)
            except Exception:
                return False
            data = image.data
            for i in range(0, len(data) - 3, 4):
                b, g, r = data[i], data[i + 1], data[i + 2]
                if r > 150 and b > 150 and g < 60:
                    return True
            return False
        ok = wait_for(purple_row13, 10, 0.002)
        t_painted = time.monotonic() - start
        mapped.append(t_mapped * 1000)
        if ok:
            painted.append(t_painted * 1000)
        stop_pids([proc.pid])
        proc.wait(timeout=5)
        time.sleep(0.3)
    return mapped, painted


# -- idle cost and memory ------------------------------------------------------

def measure_idle(desktop, staged, seconds):
    folder = prepare_folder(staged)
    proc = launch(desktop, folder)
    window = wait_for(lambda: visible_window(proc.pid), 10, 0.01)
    time.sleep(10)
    cpu0, sw0, rss10 = proc_stat(proc.pid)
    time.sleep(seconds)
    cpu1, sw1, _ = proc_stat(proc.pid)
    shown = ((cpu1 - cpu0) * 1000 * 60 / seconds, (sw1 - sw0) * 60 / seconds)
    # Minimizing hides the window to the tray (the default setting).
    iconify(desktop, window)
    if not wait_for(lambda: visible_window(proc.pid) is None, 5, 0.05):
        raise RuntimeError('the window did not hide to the tray')
    time.sleep(2)
    cpu0, sw0, _ = proc_stat(proc.pid)
    time.sleep(seconds)
    cpu1, sw1, rss_end = proc_stat(proc.pid)
    hidden = ((cpu1 - cpu0) * 1000 * 60 / seconds, (sw1 - sw0) * 60 / seconds)
    stop_pids([proc.pid])
    return shown, hidden, rss10


def launch_floor(desktop, floor_exe):
    return subprocess.Popen([floor_exe], env=dict(desktop.env), cwd=desktop.home, stdin=subprocess.DEVNULL,
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def time_to_map(desktop, start_process):
    """Milliseconds from exec to the X server's MapNotify of the process's
    first window larger than a tray icon, and the process."""
    import select
    from Xlib import X, display
    screen = display.Display(desktop.display)
    root = screen.screen().root
    root.change_attributes(event_mask=X.SubstructureNotifyMask)
    screen.sync()
    start = time.monotonic()
    proc = start_process()
    try:
        while time.monotonic() - start < 10:
            select.select([screen.fileno()], [], [], 0.05)
            while screen.pending_events():
                event = screen.next_event()
                if event.type != X.MapNotify:
                    continue
                try:
                    geometry = event.window.get_geometry()
                except Exception:
                    continue
                if geometry.width > 200 and geometry.height > 200:
                    return (time.monotonic() - start) * 1000, proc
        return None, proc
    finally:
        screen.close()


def measure_shape(desktop, staged, floor_exe, runs, memory_runs, idle_seconds):
    """The program against the bare window of its shape (bench_floor), in
    interleaved runs: exec to MapNotify, resident memory 10 s after start, and
    idle CPU over idle_seconds with the window shown."""
    starts = {'program': [], 'floor': []}
    memory = {'program': [], 'floor': []}
    idle = {'program': [], 'floor': []}
    def starter(name):
        # The program's fresh folder is copied before the clock starts.
        if name == 'program':
            folder = prepare_folder(staged)
            return lambda: launch(desktop, folder)
        return lambda: launch_floor(desktop, floor_exe)

    for run in range(runs):
        for name in ('program', 'floor') if run % 2 == 0 else ('floor', 'program'):
            ms, proc = time_to_map(desktop, starter(name))
            if ms is not None:
                starts[name].append(ms)
            if run < memory_runs:
                time.sleep(10)
                cpu0, _, rss = proc_stat(proc.pid)
                memory[name].append(rss)
                if run == 0:
                    time.sleep(idle_seconds)
                    idle[name].append((proc_stat(proc.pid)[0] - cpu0) * 1000 * 60 / idle_seconds)
            stop_pids([proc.pid])
            proc.wait(timeout=5)
            time.sleep(0.3)
    return starts, memory, idle


# -- alarm onset -------------------------------------------------------------

def minute_rows(first_minute_start, count, step=1):
    rows = []
    for k in range(count):
        t = time.localtime(first_minute_start + 60 * step * k)
        rows.append((None, time.strftime('%H:%M', t), f'bench {k}'))
    return rows


def next_minute(now, margin=20):
    start = (int(now) // 60 + 1) * 60
    return start if start - now >= margin else start + 60


def measure_onsets(desktop, staged, trips):
    first = next_minute(time.time())
    folder = prepare_folder(staged, minute_rows(first, trips))
    proc = launch(desktop, folder)
    wait_for(lambda: visible_window(proc.pid), 10, 0.01)
    delays, missed = [], 0
    for k in range(trips):
        boundary = first + 60 * k
        while time.time() < boundary + 3:
            time.sleep(0.2)
        onsets = desktop.recorder.onsets(boundary - 0.5, boundary + 3)
        if onsets:
            delays.append((onsets[0] - boundary) * 1000)
        else:
            missed += 1
    stop_pids([proc.pid])
    return delays, missed


# -- tick punctuality (and memory over a long run) -----------------------------

def find_clock_label(node, pattern, depth=0):
    """The label that shows the current date and time (its name is its text)."""
    if depth > 30:
        return None
    try:
        if ui.role(node) == 'label' and pattern.match(ui.name(node) or ''):
            return node
        for child in node:
            if child is not None:
                found = find_clock_label(child, pattern, depth + 1)
                if found is not None:
                    return found
    except Exception:
        return None
    return None


def measure_ticks(desktop, staged, minutes):
    """Every wall-clock second must get exactly one tick. Ticks are observed
    from outside, by polling the accessible name (its text) of the
    date-and-time label, with one core kept busy by another process and
    alarms sounding every two minutes."""
    start_at = next_minute(time.time(), margin=25)
    rows = minute_rows(start_at + 60, max(1, minutes // 2), step=2)
    folder = prepare_folder(staged, rows, times=2)
    proc = launch(desktop, folder, accessible=True)
    app = ui.App(desktop, folder)
    app.proc = proc
    app.main(30)
    time.sleep(10)
    _, _, rss_start = proc_stat(proc.pid)

    # The label's accessible name is its text; poll it every few
    # milliseconds and stamp each change with the wall clock.
    pattern = re.compile(r'^\w{3} \d{2}, \d{4} \d{2}:\d{2}:(\d{2})$')
    frame = app.main(30)
    label = wait_for(lambda: find_clock_label(frame, pattern), 10)
    events = []
    busy = subprocess.Popen(['python3', '-c', 'while True: pass'])
    t0 = time.time()
    last = None
    while time.time() - t0 < minutes * 60:
        try:
            text = label.name
        except Exception:
            text = None
        stamp = time.time()
        if text and text != last:
            match = pattern.match(text)
            if match:
                events.append((stamp, int(match.group(1))))
            last = text
        time.sleep(0.003)
    t1 = time.time()
    busy.kill()
    _, _, rss_end = proc_stat(proc.pid)
    stop_pids([proc.pid])

    # One observed tick per wall second between the first and last full seconds.
    by_second = {}
    for stamp, shown_second in events:
        second = int(stamp)
        # An event read a little after its boundary belongs to the second it shows.
        if (second % 60) != shown_second and ((second - 1) % 60) == shown_second:
            second -= 1
        by_second.setdefault(second, []).append(stamp - second)
    span = range(int(t0) + 2, int(t1) - 1)
    skipped = sum(1 for s in span if s not in by_second)
    doubled = sum(1 for s in span if len(by_second.get(s, [])) > 1)
    offsets = [min(v) * 1000 for s, v in by_second.items() if s in span]
    return len(span), skipped, doubled, offsets, rss_start, rss_end


# -- memory over a long run -----------------------------------------------------

def measure_memory(desktop, staged, minutes, every=3):
    """Resident memory of the real program, sampled every 30 s over a long
    run with the window shown and an alarm sounding (two plays, 15 s apart)
    every few minutes. Accessibility stays off: only the program is measured."""
    start_at = next_minute(time.time(), margin=25)
    rows = minute_rows(start_at + 60 * every, max(1, min(13, minutes // every)), step=every)
    folder = prepare_folder(staged, rows, times=2)
    proc = launch(desktop, folder)
    wait_for(lambda: visible_window(proc.pid), 10, 0.01)
    time.sleep(10)
    samples = []
    t0 = time.time()
    while True:
        samples.append(proc_stat(proc.pid)[2])
        if time.time() - t0 >= minutes * 60:
            break
        time.sleep(30)
    trips = sum(1 for k in range(len(rows)) if start_at + 60 * every * (k + 1) < time.time())
    heard = len(desktop.recorder.onsets(t0, time.time() + 1))
    stop_pids([proc.pid])
    return samples, trips, heard


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('app_dir')
    parser.add_argument('--tick-minutes', type=int, default=10)
    parser.add_argument('--trips', type=int, default=5)
    parser.add_argument('--startup-runs', type=int, default=10)
    parser.add_argument('--idle-seconds', type=int, default=60)
    parser.add_argument('--memory-minutes', type=int, default=30)
    parser.add_argument('--floor', help='the bench_floor program (default: beside the staged program)')
    parser.add_argument('--shape-runs', type=int, default=20)
    parser.add_argument('--only', choices=['shape', 'startup', 'idle', 'onset', 'ticks', 'memory'], action='append',
                        help='measure only these (may be given more than once)')
    args = parser.parse_args()
    wanted = set(args.only or ['shape', 'startup', 'idle', 'onset', 'ticks', 'memory'])
    floor = os.path.abspath(args.floor or os.path.join(args.app_dir, '..', 'bench', 'bench_floor'))

    desktop = Desktop()
    desktop.start()
    rows = []
    try:
        if 'shape' in wanted:
            starts, memory, idle = measure_shape(desktop, args.app_dir, floor, args.shape_runs,
                                                 min(5, args.shape_runs), args.idle_seconds)
            for label, values, unit in (('start-up to MapNotify', starts, 'ms'),
                                        ('resident memory after 10 s', memory, 'MB'),
                                        ('idle CPU per minute, shown', idle, 'ms')):
                mine, ref = statistics.median(values['program']), statistics.median(values['floor'])
                rows.append((f'{label}, against the same-shape window',
                             f'{mine:.1f} {unit} / {ref:.1f} {unit} = {mine / ref:.2f}x'
                             f' (medians of {len(values["program"])} and {len(values["floor"])})'))
        if 'startup' in wanted:
            mapped, painted = measure_startup(desktop, args.app_dir, args.startup_runs)
            rows.append(('start-up to window mapped (ms)',
                         'median %.0f, max %.0f' % (statistics.median(mapped), max(mapped))))
            if painted:
                rows.append(('start-up to table painted (ms)', 'median %.0f, max %.0f (%d/%d runs)'
                             % (statistics.median(painted), max(painted), len(painted), len(mapped))))
        if 'idle' in wanted:
            shown, hidden, rss10 = measure_idle(desktop, args.app_dir, args.idle_seconds)
            rows.append(('resident memory after 10 s (MB)', '%.1f' % rss10))
            rows.append(('idle CPU per minute, shown (ms)', '%.1f (%.0f context switches)' % shown))
            rows.append(('idle CPU per minute, in tray (ms)', '%.1f (%.0f context switches)' % hidden))
        if 'onset' in wanted:
            delays, missed = measure_onsets(desktop, args.app_dir, args.trips)
            if delays:
                rows.append(('alarm onset after hh:nn:00 (ms)', 'min %.1f, median %.1f, p95 %.1f, max %.1f; %d missed'
                             % (min(delays), statistics.median(delays), percentile(delays, 95), max(delays),
                                missed)))
            else:
                rows.append(('alarm onset after hh:nn:00 (ms)', 'no onset heard; %d missed' % missed))
        if 'ticks' in wanted:
            seconds, skipped, doubled, offsets, rss_a, rss_b = measure_ticks(desktop, args.app_dir,
                                                                             args.tick_minutes)
            rows.append(('ticks over %d min, one core busy' % args.tick_minutes,
                         '%d seconds, %d skipped, %d doubled' % (seconds, skipped, doubled)))
            if offsets:
                rows.append(('tick seen after its second (ms)', 'median %.1f, p95 %.1f, max %.1f'
                             % (statistics.median(offsets), percentile(offsets, 95), max(offsets))))
            rows.append(('resident memory, accessibility on (MB)', 'start %.1f, end %.1f' % (rss_a, rss_b)))
        if 'memory' in wanted:
            samples, trips, heard = measure_memory(desktop, args.app_dir, args.memory_minutes)
            first_half = samples[:len(samples) // 2] or samples
            rows.append(('resident memory over %d min (MB)' % args.memory_minutes,
                         'start %.1f, end %.1f, max %.1f; first-half max %.1f; %d trips, %d plays heard'
                         % (samples[0], samples[-1], max(samples), max(first_half), trips, heard)))
    finally:
        desktop.stop()
    width = max(len(r[0]) for r in rows)
    print()
    for name, value in rows:
        print(f'{name:<{width}}  {value}')


if __name__ == '__main__':
    main()
