"""Drives the real program as a user would: through the accessibility tree,
the mouse and the keyboard."""

import contextlib
import os
import shutil
import sqlite3
import subprocess

import pyatspi
from gi.repository import Atspi, GLib

from desktop import stop_pids, wait_for

MAIN_TITLE = 'Quorvel Alarm Clock'

# Queries may wait for a busy program; presses must not wait at all, because a
# menu command that opens a modal box only answers once the box is closed.
Atspi.set_timeout(8000, 15000)
PRESS_TIMEOUT_MS = 700


class Failure(AssertionError):
    """A scenario's expectation that the program did not meet."""


def check(condition, message):
    if not condition:
        raise Failure(message)


def fresh_copy(staged, dest):
    shutil.rmtree(dest, ignore_errors=True)
    shutil.copytree(staged, dest)
    return dest


def query(folder, sql):
    """Reads the program's database the way it stands on disk, without locking it for long."""
    uri = 'file:' + os.path.join(folder, 'alarmclock.mdb') + '?mode=ro'
    with contextlib.closing(sqlite3.connect(uri, uri=True, timeout=5)) as db:
        return db.execute(sql).fetchall()


def read_setting(folder, column):
    rows = query(folder, f'SELECT {column} FROM tblprogramsetting ORDER BY lngprogramsettingid')
    return rows[0][0] if rows else None


def read_rows(folder):
    return query(folder, 'SELECT dtalarmclockmmmddyyyy, dtalarmclockhhnn, stralarmclock '
                         'FROM tblalarmclock ORDER BY lngalarmclockid')


# A window being torn down hands out None for children it no longer has.
def role(node):
    try:
        return node.getRoleName()
    except (GLib.Error, AttributeError):
        return None


def name(node):
    try:
        return node.name
    except (GLib.Error, AttributeError):
        return None


def showing(node):
    try:
        return node.getState().contains(pyatspi.STATE_SHOWING)
    except (GLib.Error, AttributeError):
        return False


def enabled(node):
    try:
        return node.getState().contains(pyatspi.STATE_ENABLED)
    except (GLib.Error, AttributeError):
        return False


def text_of(node):
    return node.queryText().getText(0, -1)


def extents(node):
    e = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    return e.x, e.y, e.width, e.height


def find_in(root, wanted_name, wanted_role=None, must_show=False):
    def matches(node):
        return (name(node) == wanted_name and (wanted_role is None or role(node) == wanted_role)
                and (not must_show or showing(node)))
    try:
        return pyatspi.findDescendant(root, matches)
    except GLib.Error:
        return None


def press(node):
    """Presses a button or chooses a menu command without waiting for what it opens."""
    Atspi.set_timeout(PRESS_TIMEOUT_MS, PRESS_TIMEOUT_MS)
    try:
        node.queryAction().doAction(0)
    except GLib.Error:
        pass
    finally:
        Atspi.set_timeout(8000, 15000)


def xdo(*args):
    subprocess.run(['xdotool', *args], check=True, capture_output=True, timeout=30)


def click(node):
    x, y, w, h = extents(node)
    check(w > 0 and h > 0, f'"{name(node)}" has no place on the screen')
    xdo('mousemove', str(x + w // 2), str(y + h // 2), 'click', '1')


def type_into(node, text, finish='Return'):
    """Clicks into a box, replaces its text by typing, then presses `finish`
    (Return, Tab, or None to stay)."""
    click(node)
    check(wait_for(lambda: node.getState().contains(pyatspi.STATE_FOCUSED), 3),
          f'"{name(node)}" did not take the keyboard focus')
    xdo('key', '--clearmodifiers', 'ctrl+a', 'BackSpace')
    if text:
        xdo('type', '--delay', '15', text)
    if finish:
        xdo('key', finish)


class App:
    """One run of the program from an application folder."""

    def __init__(self, desktop, folder, log_name='app'):
        self.desktop = desktop
        self.folder = folder
        self.log = os.path.join(desktop.logs, f'{log_name}.log')
        self.proc = None

    def start(self, **extra_env):
        env = dict(self.desktop.env, QT_LINUX_ACCESSIBILITY_ALWAYS_ON='1', **extra_env)
        with open(self.log, 'ab') as log:
            # Started from elsewhere: the program must find its files beside itself.
            self.proc = subprocess.Popen([os.path.join(self.folder, 'alarmclock')], env=env,
                                         cwd=self.desktop.home, stdin=subprocess.DEVNULL,
                                         stdout=log, stderr=log)
        return self

    @property
    def pid(self):
        return self.proc.pid

    def running(self):
        return self.proc is not None and self.proc.poll() is None

    def wait_exit(self, timeout):
        try:
            return self.proc.wait(timeout=timeout)
        except subprocess.TimeoutExpired:
            return None

    def stop(self):
        if self.proc is None:
            return
        if self.running():
            stop_pids([self.proc.pid])
        try:
            self.proc.wait(timeout=5)
        except subprocess.TimeoutExpired:
            pass

    # -- the accessibility tree --------------------------------------------

    def node(self):
        try:
            desktop = pyatspi.Registry.getDesktop(0)
            for application in desktop:
                if application is not None and application.get_process_id() == self.pid:
                    return application
        except GLib.Error:
            pass
        return None

    def windows(self):
        application = self.node()
        if application is None:
            return []
        try:
            return [w for w in application if w is not None]
        except GLib.Error:
            return []

    def window(self, title, roles=('frame', 'dialog', 'alert')):
        for w in self.windows():
            if name(w) == title and role(w) in roles:
                return w
        return None

    def wait_window(self, title, timeout=15, roles=('frame', 'dialog', 'alert')):
        found = wait_for(lambda: self.window(title, roles) if self.running() else 'gone', timeout, 0.1)
        check(found and found != 'gone',
              f'no window "{title}" appeared' + ('' if self.running() else ' (the program ended)'))
        return found

    def main(self, timeout=20):
        return self.wait_window(MAIN_TITLE, timeout, roles=('frame',))

    def find(self, wanted_name, wanted_role=None, must_show=True, within=None):
        roots = [within] if within is not None else self.windows()
        for root in roots:
            found = find_in(root, wanted_name, wanted_role, must_show)
            if found is not None:
                return found
        return None

    def wait_find(self, wanted_name, wanted_role=None, timeout=10, within=None):
        found = wait_for(lambda: self.find(wanted_name, wanted_role, True, within), timeout, 0.1)
        check(found is not None, f'no {wanted_role or "control"} "{wanted_name}" is showing')
        return found

    def menu(self, *path):
        """Chooses a menu command by its captions, e.g. menu('Utilities', 'Colors', 'Matrix')."""
        frame = self.main()
        node = next((c for c in frame if role(c) == 'menu bar'), None)
        check(node is not None, 'the main window has no menu bar')
        for caption in path:
            node = find_in(node, caption, 'menu item')
            check(node is not None, f'no menu command "{caption}" under {" > ".join(path)}')
        press(node)

    def answer(self, box, button='OK'):
        target = find_in(box, button, 'push button')
        check(target is not None, f'the box "{name(box)}" has no {button} button')
        press(target)

    def box_text(self, box):
        try:
            return '\n'.join(name(n) for n in box if role(n) == 'label' and name(n))
        except GLib.Error:      # the box closed while being read
            return ''

    def dump_tree(self, path):
        """Writes the program's accessibility tree, for a failed scenario's report."""
        lines = []

        def walk(node, depth):
            if depth > 40:
                return
            try:
                where = extents(node)
            except Exception:
                where = None
            text = ''
            if role(node) == 'text':
                try:
                    text = f' text={text_of(node)!r}'
                except Exception:
                    pass
            lines.append(f'{"  " * depth}{role(node)} {name(node)!r} {where}'
                         f'{" showing" if showing(node) else ""}{text}')
            try:
                for child in node:
                    if child is not None:
                        walk(child, depth + 1)
            except GLib.Error:
                pass

        application = self.node()
        if application is not None:
            walk(application, 0)
        with open(path, 'w') as f:
            f.write('\n'.join(lines) + '\n')


def pixels(shot, x, y, w, h):
    """RGB triples of a screenshot region."""
    raw = subprocess.run(['convert', shot, '-crop', f'{w}x{h}+{x}+{y}', '+repage', '-depth', '8',
                          'rgb:-'], check=True, capture_output=True, timeout=30).stdout
    return [tuple(raw[i:i + 3]) for i in range(0, len(raw) - 2, 3)]


def main_shown(pid):
    """Whether the process shows a window larger than a tray icon (which an
    XEmbed tray maps under the program's name)."""
    ids = subprocess.run(['xdotool', 'search', '--onlyvisible', '--pid', str(pid)],
                         capture_output=True, text=True).stdout.split()
    for wid in ids:
        geometry = subprocess.run(['xdotool', 'getwindowgeometry', '--shell', wid],
                                  capture_output=True, text=True).stdout
        values = dict(line.split('=', 1) for line in geometry.splitlines() if '=' in line)
        if int(values.get('WIDTH', 0)) > 100 and int(values.get('HEIGHT', 0)) > 100:
            return True
    return False


def x_title(pid):
    """The title the X server holds for the process' largest visible window
    (what a window manager would show in the title bar)."""
    ids = subprocess.run(['xdotool', 'search', '--onlyvisible', '--pid', str(pid)],
                         capture_output=True, text=True).stdout.split()
    best, best_area = None, 0
    for wid in ids:
        geometry = subprocess.run(['xdotool', 'getwindowgeometry', '--shell', wid],
                                  capture_output=True, text=True).stdout
        values = dict(line.split('=', 1) for line in geometry.splitlines() if '=' in line)
        area = int(values.get('WIDTH', 0)) * int(values.get('HEIGHT', 0))
        if area > best_area:
            best, best_area = wid, area
    if best is None:
        return None
    out = subprocess.run(['xprop', '-id', best, '_NET_WM_NAME'], capture_output=True, text=True).stdout
    if '=' not in out:
        return None
    # _NET_WM_NAME(UTF8_STRING) = "title"
    return out.split('=', 1)[1].strip()[1:-1]
