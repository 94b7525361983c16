#!/usr/bin/python3
"""Runs the desktop acceptance scenarios against a staged application folder.

    /usr/bin/python3 acceptance/run.py --app BUILD/app [--deb FILE.deb] [--keep DIR] [--only NAME ...]

Prints PASS or FAIL per scenario and a closing "N passed, M failed" line;
exits 1 when anything failed. A failed scenario leaves a screenshot, the
logs, the program's accessibility tree and the recorded sound in --keep.
"""

import argparse
import os
import shutil
import signal
import sys
import time
import traceback

# Keep the source folder free of compiled caches.
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from desktop import Desktop  # noqa: E402


class ScenarioTimeout(AssertionError):
    pass


def on_alarm(signum, frame):
    raise ScenarioTimeout('took too long')


def on_term(signum, frame):
    raise SystemExit(f'stopped by signal {signum}')


def keep_evidence(ctx, label, started, dest):
    os.makedirs(dest, exist_ok=True)
    ctx.desktop.screenshot(os.path.join(dest, 'screen.png'))
    ctx.recorder.dump(os.path.join(dest, 'sound.txt'), started - 5, time.time())
    for n, app in enumerate(ctx.apps):
        if app.running():
            try:
                app.dump_tree(os.path.join(dest, f'tree-{n}-{os.path.basename(app.folder)}.txt'))
            except Exception as error:       # the evidence must not hide the failure
                print(f'could not read the tree: {error}', file=sys.stderr)
    shutil.copytree(ctx.desktop.logs, os.path.join(dest, 'logs'), dirs_exist_ok=True)
    with open(os.path.join(dest, 'failure.txt'), 'w') as f:
        f.write(label + '\n')


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('--app', required=True, help='the staged application folder')
    parser.add_argument('--deb', help='the Debian package, for the scenario that installs it')
    parser.add_argument('--keep', help='folder for the evidence of failed scenarios')
    parser.add_argument('--only', nargs='*', help='run only these scenarios')
    args = parser.parse_args()
    staged = os.path.abspath(args.app)
    keep = os.path.abspath(args.keep or time.strftime('/tmp/alarmclock-acceptance-%Y%m%d-%H%M%S'))
    for needed in ('alarmclock', 'alarmclock.mdb', 'alarm.wav'):
        if not os.path.exists(os.path.join(staged, needed)):
            sys.exit(f'{staged} holds no {needed}: build first')

    signal.signal(signal.SIGTERM, on_term)
    signal.signal(signal.SIGALRM, on_alarm)
    results = []
    desktop = Desktop()
    try:
        try:
            desktop.start()
        except Exception as error:
            results.append(('desktop-stack', f'{type(error).__name__}: {error}'))
            print(f'FAIL desktop-stack: {error}', flush=True)
            return finish(results, keep)
        # The accessibility client binds to the private session bus on import.
        from scenarios import SCENARIOS, Context
        from ringing import SCENARIOS as RINGING
        from identity import SCENARIOS as IDENTITY
        from wayland import SCENARIOS as WAYLAND
        from installed import SCENARIOS as INSTALLED
        from sleep import SCENARIOS as SLEEP
        ctx = Context(desktop, staged, os.path.join(desktop.root, 'apps'))
        ctx.deb = os.path.abspath(args.deb) if args.deb else None
        try:
            for label, scenario, limit in SCENARIOS + RINGING + IDENTITY + WAYLAND + INSTALLED + SLEEP:
                if not args.only or label in args.only:
                    results.append((label, None))
                    results[-1] = (label, run_one(ctx, label, scenario, limit, keep))
        except SystemExit as stop:
            label = results[-1][0] if results else 'suite'
            results[-1:] = [(label, str(stop))]
            print(f'FAIL {label}: {stop}', flush=True)
        finally:
            ctx.stop_apps(everything=True)
    finally:
        signal.alarm(0)
        failed = any(reason for _, reason in results)
        desktop.stop(keep_logs_in=os.path.join(keep, 'desktop-logs') if failed else None)
    return finish(results, keep)


def run_one(ctx, label, scenario, limit, keep):
    """Runs one scenario; prints and returns its failure reason, or None."""
    ctx.scenario = label
    started = time.time()
    reason = None
    broken = ctx.desktop.dead_parts()
    if broken:
        reason = f'the desktop stack lost {", ".join(broken)}'
    else:
        signal.alarm(limit)
        try:
            scenario(ctx)
        except ScenarioTimeout:
            reason = f'still unfinished after {limit} s'
        except AssertionError as error:
            reason = str(error) or type(error).__name__
        except Exception as error:
            reason = f'{type(error).__name__}: {error}'
            traceback.print_exc(file=sys.stderr)
        finally:
            signal.alarm(0)
    if reason is None:
        print(f'PASS {label}', flush=True)
    else:
        print(f'FAIL {label}: {reason}', flush=True)
        keep_evidence(ctx, f'{label}: {reason}', started, os.path.join(keep, label))
    print(f'  {label} took {time.time() - started:.1f} s', file=sys.stderr, flush=True)
    ctx.stop_apps()
    return reason


def finish(results, keep):
    failed = sum(1 for _, reason in results if reason)
    if failed:
        print(f'Evidence of the failures: {keep}')
    print(f'{len(results) - failed} passed, {failed} failed', flush=True)
    return 1 if failed else 0


if __name__ == '__main__':
    sys.exit(main())
