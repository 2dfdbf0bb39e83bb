"""Programs on this screen, used by what assistive programs are told of them: roles, names, states, actions and keys."""
import os
import pathlib
import re
import subprocess
import threading
import time

import pyatspi

LISTS = (pyatspi.ROLE_TABLE, pyatspi.ROLE_TREE, pyatspi.ROLE_LIST, pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_MENU_ITEM)
BOXES = (pyatspi.ROLE_TEXT, pyatspi.ROLE_PASSWORD_TEXT)


class Missing(Exception):
    """What was to be there by then is not."""


def until(found, what, seconds=20):
    """What `found` gives when it gives something."""
    end = time.monotonic() + seconds
    while True:
        try:
            thing = found()
        except Exception as gone:  # A window that goes while it is looked at.
            thing, reason = None, gone
        if thing:
            return thing
        if time.monotonic() > end:
            raise Missing(what)
        time.sleep(0.05)


def below(thing):
    """The accessible things under one, breadth first; what is in a list only when it is asked for that list."""
    waiting = [thing]
    while waiting:
        thing = waiting.pop(0)
        try:
            count = min(thing.childCount, 400)
        except Exception:
            continue
        for place in range(count):
            try:
                child = thing.getChildAtIndex(place)
            except Exception:
                continue
            if child is not None:
                yield child
                if child.getRole() not in LISTS:
                    waiting.append(child)


def shows(thing):
    return thing.getState().contains(pyatspi.STATE_SHOWING)


def keys(*pressed):
    """xdotool's names of keys, to the window in front."""
    subprocess.run(["xdotool", "key", "--clearmodifiers", *pressed], check=True)


def type_text(text):
    subprocess.run(["xdotool", "type", "--clearmodifiers", "--delay", "15", text], check=True)


class Window:
    """One of a program's windows."""

    def __init__(self, thing):
        self.thing = thing
        self.title = thing.name

    def all(self, *roles):
        return [child for child in below(self.thing) if child.getRole() in roles and shows(child)]

    def named(self, name, *roles):
        for child in below(self.thing):
            if child.name == name and (not roles or child.getRole() in roles) and shows(child):
                return child
        return None

    def find(self, name, *roles, seconds=20):
        return until(lambda: self.named(name, *roles), f"«{name}» in «{self.title}»", seconds)

    def texts(self):
        return [child.name for child in below(self.thing) if child.name and shows(child)]

    def front(self):
        """Other programs' windows may lie over it."""
        title = re.sub(r"([^\w\s«»–])", r"\\\1", self.thing.name)
        subprocess.run(["xdotool", "search", "--all", "--onlyvisible", "--pid", str(self.thing.get_process_id()), "--name",
                        f"^{title}$", "windowactivate", "--sync"], stderr=subprocess.DEVNULL, check=False, timeout=20)
        return self

    def press(self, name, *roles):
        """From a thread: a press that opens a modal dialog is answered when that has gone."""
        act(self.find(name, *(roles or (pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_RADIO_BUTTON))))

    def fill(self, name, text):
        box = self.find(name, *BOXES)
        self.front()
        click(box)
        until(lambda: box.getState().contains(pyatspi.STATE_FOCUSED), f"the focus on «{name}»")
        keys("ctrl+a")
        type_text(text)
        until(lambda: box.queryText().getText(0, -1) == text or box.getRole() == pyatspi.ROLE_PASSWORD_TEXT,
              f"«{text}» in «{name}»")

    def text(self, name):
        return self.find(name).queryText().getText(0, -1)

    def gone(self, seconds=20):
        def is_gone():
            try:
                return self.thing.getState().contains(pyatspi.STATE_DEFUNCT) or not shows(self.thing)
            except Exception:
                return True
        until(is_gone, f"the end of «{self.title}»", seconds)


def click(thing):
    """With the mouse, in its middle; its window must be in front."""
    place = thing.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    subprocess.run(["xdotool", "mousemove", str(place.x + place.width // 2), str(place.y + place.height // 2), "click", "1"],
                   check=True)


def act(thing):
    def press():
        try:
            thing.queryAction().doAction(0)
        except Exception:
            pass
    threading.Thread(target=press, daemon=True).start()


class Program:
    """kel-host of the installed tree, for one person: settings and data of its own."""

    installed = pathlib.Path()
    pictures = pathlib.Path()  # Of the screen, where a journey failed.

    def __init__(self, place, *arguments, person="ana"):
        self.home = pathlib.Path(place) / person
        for folder in ("config", "data", "cache"):
            (self.home / folder).mkdir(parents=True, exist_ok=True)
        self.log = open(self.home / "log", "ab")
        self.process = subprocess.Popen([self.installed / "bin/kel-host", *map(str, arguments)], stdout=self.log,
                                        stderr=self.log, cwd=self.home, env=self.environment_of(self.home))

    @classmethod
    def environment_of(cls, home):
        return dict(os.environ, HOME=str(home), USER=home.name, LOGNAME=home.name, XDG_CONFIG_HOME=str(home / "config"),
                    XDG_DATA_HOME=str(home / "data"), XDG_CACHE_HOME=str(home / "cache"),
                    XDG_DATA_DIRS=f"{cls.installed / 'share'}:/usr/share",
                    LD_LIBRARY_PATH=":".join(str(folder) for folder in cls.installed.glob("lib*")))

    def thing(self):
        desktop = pyatspi.Registry.getDesktop(0)
        for place in range(desktop.childCount):
            program = desktop.getChildAtIndex(place)
            if program is not None and program.get_process_id() == self.process.pid:
                return program
        return None

    def windows(self):
        program = self.thing()
        return [Window(child) for child in (program or []) if child is not None and shows(child)]

    def window(self, title, seconds=20):
        """The window whose title has that in it, the newest of several."""
        def found():
            return next((one for one in reversed(self.windows()) if title in one.title), None)
        return until(found, f"a window «{title}»", seconds)

    def answer(self, button):
        """A box that has such a button."""
        def found():
            boxes = [one for one in self.windows() if one.title == "Kel"]
            return next((box for box in boxes if box.named(button, pyatspi.ROLE_PUSH_BUTTON)), None)
        box = until(found, f"a box with «{button}»")
        box.press(button)
        box.gone()

    def signal(self, number):
        self.process.send_signal(number)

    def ended(self, seconds=20):
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            raise Missing("the end of the program") from None

    def __enter__(self):
        return self

    def __exit__(self, fault, *_):
        if fault is not None:
            picture(self.pictures / f"{self.home.parent.name}-{self.home.name}.png")
            for window in self.windows() if self.process.poll() is None else ():
                print(f"  «{window.title}»: {window.texts()}")
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        self.log.close()


def picture(file):
    subprocess.run(["import", "-window", "root", str(file)], check=False)
