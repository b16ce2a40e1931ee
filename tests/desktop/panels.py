"""Panels that people have, as hosts of the status item: each with nothing in it but its status area."""

import glob
import os
import subprocess
from pathlib import Path

import dbus

from desktop import output, wait_for

WATCHER = "org.kde.StatusNotifierWatcher"
XFCONF = "org.xfce.Xfconf"
RING = (146, 183, 235)


def config_folder():
    return Path(os.environ["XDG_CONFIG_HOME"])


def write(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")


class Panel:
    """One that can be killed and started again."""

    command = ()

    def __init__(self, test):
        self._test = test
        self._process = None
        self.configure()

    def configure(self):
        """Writes down what the panel reads as it starts."""

    def shows_icon(self):
        """Whether the ring of the running countdown is on the panel."""
        picture = subprocess.run(["import", "-window", "root", "-crop", "576x32+0+0", "-depth", "8", "rgb:-"],
                                 capture_output=True, check=True).stdout
        near = [range(channel - 6, channel + 7) for channel in RING]
        pixels = zip(*(picture[channel::3] for channel in range(3)))
        return sum(all(value in wanted for value, wanted in zip(pixel, near)) for pixel in pixels) > 20

    def start(self):
        self._process = self._test.spawn(*self.command)
        wait_for(lambda: dbus.SessionBus().name_has_owner(WATCHER), "the panel's status area")

    def kill(self):
        self._process.kill()
        self._process.wait()
        wait_for(lambda: not dbus.SessionBus().name_has_owner(WATCHER), "the status area to be gone")


class XfcePanel(Panel):
    command = ("xfce4-panel", "--disable-wm-check")

    def configure(self):
        write(config_folder() / "xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", """<?xml version="1.0"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array"><value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="30"/>
      <property name="size" type="uint" value="32"/>
      <property name="icon-size" type="uint" value="24"/>
      <property name="background-style" type="uint" value="1"/>
      <property name="background-rgba" type="array"><value type="double" value="0.94"/><value
        type="double" value="0.94"/><value type="double" value="0.94"/><value type="double" value="1"/></property>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray">
      <property name="icon-size" type="int" value="24"/>
      <property name="square-icons" type="bool" value="true"/>
    </property>
  </property>
</channel>
""")
        self._test.spawn(*glob.glob("/usr/lib/*/xfce4/xfconf/xfconfd"))
        wait_for(lambda: dbus.SessionBus().name_has_owner(XFCONF), "the settings of the panel")


class LxqtPanel(Panel):
    command = ("lxqt-panel",)

    def configure(self):
        write(config_folder() / "lxqt/panel.conf", """[General]
__userfile__=true
iconTheme=hicolor

[panel1]
alignment=-1
background-color=#202020
desktop=0
iconSize=24
panelSize=32
plugins=statusnotifier
position=Top
width=30
width-percent=true

[statusnotifier]
type=statusnotifier
""")


class OldTray(Panel):
    """Of the older protocol only: XEmbed."""

    command = ("trayer", "--edge", "top", "--align", "left", "--widthtype", "pixel", "--width", "300", "--heighttype",
               "pixel", "--height", "32", "--transparent", "true", "--alpha", "0", "--tint", "0xf0f0f0")

    def start(self):
        self._process = self._test.spawn(*self.command)
        wait_for(lambda: output("xdotool", "search", "--onlyvisible", "--class", "^trayer$").strip(), "the tray")

    def kill(self):
        self._process.kill()
        self._process.wait()
