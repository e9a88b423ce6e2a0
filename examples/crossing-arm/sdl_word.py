"""What the words have in common: how they become commands of GDB, and what they ask and print."""

import os
import select
import sys

import gdb

import sdl_run
from sdl_target import Refusal, definition, instances, number_of, parse_number


class Word(gdb.Command):
    """A command that is carried out by a function; its refusals are GDB's errors."""

    def __init__(self, name, arguments, needs, function):
        self.usage = f"{name} {arguments}".strip()
        self.__doc__ = f"{function.__doc__}\nUsage: {self.usage}"
        self.least = arguments.split("[")[0].count("<")
        self.most = arguments.count("<") if "..." not in arguments else 99
        self.needs, self.function = needs, function
        super().__init__(name, gdb.COMMAND_USER)

    def invoke(self, line, from_tty):
        """Called by GDB."""
        self.dont_repeat()
        words = line.split()
        try:
            if not self.least <= len(words) <= self.most:
                few = "few" if len(words) < self.least else "many"
                raise Refusal(f"Too {few} arguments. Usage: {self.usage}")
            definition()
            self.needs()
            self.function(*words)
        except Refusal as refusal:
            raise gdb.GdbError(str(refusal))
        except (KeyboardInterrupt, EOFError):
            raise gdb.GdbError("Cancelled.")
        except gdb.error as error:
            raise gdb.GdbError(f"GDB says: {error}")
        except (LookupError, ValueError, AttributeError):
            raise gdb.GdbError("The system's tables in the target make no sense; "
                               '"compare-sections" tells whether it runs this program.')

    def complete(self, text, word):
        """Called by GDB: the names in the system that the word begins."""
        try:
            names = [each.name for each in definition().signals + definition().processes]
        except (Refusal, gdb.error):
            return []
        return [name for name in names if name.lower().startswith((word or "").lower())]


def nothing():
    """For words about the program alone, or about nothing."""


def target():
    """For words that run the target."""
    thread = gdb.selected_thread()
    if thread is None or not thread.is_valid():
        raise Refusal('There is no target: "target remote HOST:PORT" connects to one.')
    if thread.is_running():
        raise Refusal("The target is running: stop it first.")


def system():
    """For words that look at the system. One that was at its start before is brought there again
    when the target has been reset."""
    target()
    if sdl_run.history.is_begun and sdl_run.stands_at_reset():
        sdl_run.start()
    if not sdl_run.has_started():
        raise Refusal('The system is not started: "next-transition" or "go" starts it.')


def word(name, arguments="", needs=system):
    """Makes a GDB command of a function."""
    return lambda function: Word(name, arguments, needs, function)


def columns(rows, otherwise="", indent=""):
    """Prints lines of columns, each as wide as its widest cell."""
    widths = [max(map(len, column)) for column in zip(*rows)]
    for row in rows:
        print((indent + "  ".join(cell.ljust(width) for cell, width in zip(row, widths))).rstrip())
    if not rows and otherwise:
        print(otherwise)


def counted(number, thing):
    """As in "1 signal", "7 signals"."""
    return f"{number} {thing}{'' if number == 1 else 's'}"


def can_ask():
    """Whether there is a user."""
    return sys.stdin.isatty()


def read_line(prompt):
    """What the user writes. Python's own input() would hear of no interrupt before the line ends."""
    print(prompt, end="", flush=True)
    stdin = sys.stdin.fileno()
    while not select.select([stdin], [], [], 0.1)[0]:
        pass
    line = os.read(stdin, 4096)
    if not line:
        raise EOFError
    return line.decode(errors="replace").strip()


def ask(question, items):
    """The index of the item that the user chooses from a menu, which looks like GDB's own."""
    if not can_ask():
        raise Refusal(f"{question} none is named; it may be {', '.join(items)}.")
    width = len(str(len(items)))
    print(question, "[0] cancel", sep="\n")
    for i, item in enumerate(items, 1):
        print(f"[{i:{width}}] {item}")
    number = parse_number(read_line("> ") or "0", 0, len(items))
    if not number:
        raise Refusal("Cancelled." if number == 0 else "There is no such number.")
    return number - 1


def ask_text(question):
    """What the user writes."""
    if not can_ask():
        raise Refusal(f"{question} none is given.")
    print(question)
    return read_line(">").split()


def living(text, takes_all=False):
    """The living instances that the user means by a word; he is asked which when it is empty, or
    when it names a process with several of them."""
    everything = instances()
    if text:
        pid = definition().parse_pid(text)
        found = [each for each in everything if each.pid == pid]
        of_type = [each for each in everything if each.type is definition().type_of(pid)]
        if number_of(pid) and not found:
            raise Refusal(f"There is no instance {definition().pid_text(pid)}.")
        if not found and not of_type:
            raise Refusal(f"Process {definition().type_of(pid).name} has 0 living instances.")
        if found or takes_all or len(of_type) == 1:
            return found or of_type
        everything = of_type
    return [everything[ask("Instance:", [each.name() for each in everything])]]
