#!/usr/bin/python3
"""Stand-ins for two desktop services on the private session bus, each run as
a child process by a scenario:

    bus_services.py watcher LOG          a panel's StatusNotifierItem host
    bus_services.py notifications LOG    a notification server

Each appends what the program asks of it to LOG as JSON lines, and takes
commands as lines on its standard input:

    activate SERVICE       (watcher) clicks the icon the program registered
    menu SERVICE           (watcher) records the icon's menu, as a panel reads it
    click SERVICE PATH ID  (watcher) chooses the entry ID of the menu at PATH
    invoke ID KEY          (notifications) presses a notification's button
"""

import json
import sys

from gi.repository import Gio, GLib

WATCHER = '''<node><interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
  <signal name="StatusNotifierItemUnregistered"><arg type="s"/></signal>
  <signal name="StatusNotifierHostRegistered"/>
</interface></node>'''

NOTIFICATIONS = '''<node><interface name="org.freedesktop.Notifications">
  <method name="Notify">
    <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
    <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/>
  </method>
  <method name="CloseNotification"><arg type="u" direction="in"/></method>
  <method name="GetCapabilities"><arg type="as" direction="out"/></method>
  <method name="GetServerInformation">
    <arg type="s" direction="out"/><arg type="s" direction="out"/>
    <arg type="s" direction="out"/><arg type="s" direction="out"/>
  </method>
  <signal name="NotificationClosed"><arg type="u"/><arg type="u"/></signal>
  <signal name="ActionInvoked"><arg type="u"/><arg type="s"/></signal>
</interface></node>'''


def main():
    kind, log_path = sys.argv[1], sys.argv[2]
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    log = open(log_path, 'a', buffering=1)
    items = []
    last_id = [0]

    def record(**entry):
        log.write(json.dumps(entry) + '\n')

    def call(service, path, iface, method, args):
        return bus.call_sync(service, path, iface, method, args, None, Gio.DBusCallFlags.NONE, 5000,
                             None).unpack()

    def watcher_call(conn, sender, path, iface, method, params, invocation):
        if method == 'RegisterStatusNotifierItem':
            service = params.unpack()[0]
            # Qt passes its service name; a bare path means the sender's own name.
            items.append(service if not service.startswith('/') else sender)
            record(call='register', service=items[-1])
        invocation.return_value(None)

    def watcher_property(conn, sender, path, iface, prop):
        return {'RegisteredStatusNotifierItems': GLib.Variant('as', items),
                'IsStatusNotifierHostRegistered': GLib.Variant('b', True),
                'ProtocolVersion': GLib.Variant('i', 0)}[prop]

    def notifications_call(conn, sender, path, iface, method, params, invocation):
        if method == 'Notify':
            app, replaces, icon, summary, body, actions, hints, timeout = params.unpack()
            last_id[0] = replaces or last_id[0] + 1
            record(call='Notify', id=last_id[0], replaces=replaces, summary=summary, body=body,
                   actions=actions)
            invocation.return_value(GLib.Variant('(u)', (last_id[0],)))
        elif method == 'CloseNotification':
            nid = params.unpack()[0]
            record(call='CloseNotification', id=nid)
            bus.emit_signal(None, '/org/freedesktop/Notifications', 'org.freedesktop.Notifications',
                            'NotificationClosed', GLib.Variant('(uu)', (nid, 3)))
            invocation.return_value(None)
        elif method == 'GetCapabilities':
            invocation.return_value(GLib.Variant('(as)', (['actions', 'body'],)))
        else:
            invocation.return_value(GLib.Variant('(ssss)', ('fake', 'acceptance', '1', '1.2')))

    def command(channel, condition):
        line = sys.stdin.readline()
        if not line:
            loop.quit()
            return False
        words = line.split()
        if words[:1] == ['activate']:
            bus.call(words[1], '/StatusNotifierItem', 'org.kde.StatusNotifierItem', 'Activate',
                     GLib.Variant('(ii)', (10, 10)), None, Gio.DBusCallFlags.NONE, 5000, None, None)
        elif words[:1] == ['menu']:
            path = call(words[1], '/StatusNotifierItem', 'org.freedesktop.DBus.Properties', 'Get',
                        GLib.Variant('(ss)', ('org.kde.StatusNotifierItem', 'Menu')))[0]
            call(words[1], path, 'com.canonical.dbusmenu', 'AboutToShow', GLib.Variant('(i)', (0,)))
            _, (_, _, children) = call(words[1], path, 'com.canonical.dbusmenu', 'GetLayout',
                                       GLib.Variant('(iias)', (0, -1, [])))
            record(call='menu', path=path, entries=[[c[0], c[1].get('label', '')] for c in children
                                                    if c[1].get('visible', True)])
        elif words[:1] == ['click']:
            call(words[1], words[2], 'com.canonical.dbusmenu', 'Event',
                 GLib.Variant('(isvu)', (int(words[3]), 'clicked', GLib.Variant('i', 0), 0)))
        elif words[:1] == ['invoke']:
            bus.emit_signal(None, '/org/freedesktop/Notifications', 'org.freedesktop.Notifications',
                            'ActionInvoked', GLib.Variant('(us)', (int(words[1]), words[2])))
        record(command=line.strip())
        return True

    if kind == 'watcher':
        name, path, xml = 'org.kde.StatusNotifierWatcher', '/StatusNotifierWatcher', WATCHER
        handlers = (watcher_call, watcher_property, None)
    else:
        name, path, xml = 'org.freedesktop.Notifications', '/org/freedesktop/Notifications', NOTIFICATIONS
        handlers = (notifications_call, None, None)
    bus.register_object(path, Gio.DBusNodeInfo.new_for_xml(xml).interfaces[0], *handlers)
    Gio.bus_own_name_on_connection(bus, name, Gio.BusNameOwnerFlags.NONE,
                                   lambda *a: record(ready=name), lambda *a: record(lost=name))
    GLib.io_add_watch(GLib.IOChannel.unix_new(0), GLib.PRIORITY_DEFAULT, GLib.IOCondition.IN, command)
    loop = GLib.MainLoop()
    loop.run()


if __name__ == '__main__':
    main()
