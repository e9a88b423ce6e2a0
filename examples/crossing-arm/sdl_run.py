"""Runs of the SDL system in the target: where they stop, and what they tell."""

import threading
from signal import (
    SIG_BLOCK, SIG_SETMASK, SIGINT, SIGUSR2, pthread_kill, pthread_sigmask, sigwait,
)

import gdb

from sdl_target import (
    ANY, FOREVER, NO_SIGNAL, START, Refusal, assign, definition, find_name, indexes, now, number_of,
    numbers, ready, time_text, transition_text, value,
)

# Numbers of kernel_debug.h.
BEGIN, END, OUTPUT, CREATE, SET, RESET, TASK = range(7)
NO_RECEIVER, QUEUE_FULL, TIMERS_FULL = range(1, 4)
ASKED, COUNT, TIME, NOTHING, BREAKPOINT, ERROR, HISTORY_FULL = range(7)


class Event:
    """An entry of the kernel's history."""

    def __init__(self, row):
        self.time = int(row["time"])
        self.process, self.other = int(row["process"]), int(row["other"])
        self.kind, self.what = int(row["kind"]), int(row["what"])
        self.state, self.result = int(row["state"]), int(row["result"])
        self.parameters = numbers(row["parameter"])

    def action(self):
        """The trace level of an action, and its text."""
        system = definition()
        process = system.type_of(self.process)
        if self.kind == OUTPUT:
            signal = system.input_text(self.what, self.parameters)
            outcome = ["", ": lost, there is no such instance", ": lost, its queue is full"]
            return 2, f"output {signal} to {system.pid_text(self.other)}{outcome[self.result]}"
        if self.kind == CREATE:
            refused = system.processes[self.what].name + ": refused, no more instances allowed"
            return 2, "create " + (system.pid_text(self.other) if self.other else refused)
        if self.kind == TASK:
            new = system.value_text(process.sorts[self.what], self.parameters[0])
            return 3, f"task {process.variables[self.what]} := {new}"
        timer = system.signal_name(self.what)
        return 3, f"set {timer} to {time_text(self.time)}" if self.kind == SET else f"reset {timer}"


class Transition:
    """What the history tells of a transition that is over."""

    def __init__(self, events):
        self.begin, *self.actions, self.end = events
        self.process = definition().type_of(self.begin.process)

    def text(self, level):
        """Lines; `level` as in Trace."""
        begin, system = self.begin, definition()
        state = self.process.state_text(begin.state)
        if begin.what != NO_SIGNAL:
            state += ": " + system.input_text(begin.what, begin.parameters)
        outcome = "-> " + self.process.state_text(self.end.state)
        head = f"{time_text(begin.time):>11}  {system.pid_text(begin.process):<17}  {state:<28} "
        actions = [text for least, text in map(Event.action, self.actions) if least <= level]
        return ("\n" + " " * 15).join([head + ("discarded" if self.end.result else outcome)] + actions)

    def name(self):
        """As in "Button:1 in Idle at Press"."""
        return transition_text(self.begin.process, self.begin.state, self.begin.what)


class History:
    """A reader of the kernel's history."""

    def __init__(self):
        self.position = 0  # number of the event to read next
        self.open = []  # events of a transition that is not over
        self.is_begun = False  # the system was brought to its start

    def begin(self):
        """Forgets what happened without the reader."""
        count = int(value("sdl_history_count"))
        if count != self.position:
            self.position, self.open = count, []

    def read(self):
        """The transitions that ended since the last call, and how many events were lost."""
        table = value("sdl_history")
        length = len(indexes(table))
        count = int(value("sdl_history_count"))
        new = (count - self.position) % 2**32
        self.position = count
        if new > length:
            self.open = []
        transitions = []
        for i in range(count - min(new, length), count):
            event = Event(table[i % length])
            self.open = [event] if event.kind == BEGIN else self.open and self.open + [event]
            if event.kind == END and self.open:
                transitions.append(Transition(self.open))
                self.open = []
        return transitions, max(0, new - length)


class Trace:
    """What runs tell: nothing (level 0), transitions (1), also signals (2), also timers and tasks
    (3); of the process types in the mask, of all without one."""

    def __init__(self):
        self.level, self.mask = 1, None

    def text(self):
        """For the user."""
        masked = "all" if self.mask is None else ", ".join(sorted(self.mask))
        return f"Trace level {self.level}, processes: {masked}"

    def show(self, transitions, lost):
        """Prints what is wanted of what the history read."""
        if self.level == 0:
            return
        if lost:
            print(f"... {lost} events were lost: their transition made too many")
        for each in transitions:
            if self.mask is None or each.process.name in self.mask:
                print(each.text(self.level))


class Breakpoint:
    """Transitions before which runs stop: of an instance, in a state, at a signal; ANY for all."""

    def __init__(self, words):
        system = definition()
        self.pid = ANY if words[0] == "*" else system.parse_pid(words[0])
        self.types = [system.type_of(self.pid)] if self.pid != ANY else system.processes
        names = sorted({name for each in self.types for name in each.states} | {"start"})
        state = (words[1:] or ["*"])[0]
        self.state = None if state == "*" else names[find_name(state, names, "state")]
        inputs = sorted({signal for each in self.types for signal in each.inputs()})
        signal = (words[2:] or ["*"])[0]
        self.input = ANY
        if signal != "*":
            signals = [system.signal_name(each) for each in inputs]
            self.input = inputs[find_name(signal, signals, "signal or timer")]

    def text(self):
        """As in "Button:2 in Idle at Press"."""
        system = definition()
        process = "*"
        if self.pid != ANY:
            process = system.pid_text(self.pid) if number_of(self.pid) else self.types[0].name
        signal = "*" if self.input == ANY else system.signal_name(self.input)
        return f"{process} in {self.state or '*'} at {signal}"

    def rows(self):
        """For the kernel: type, number, state, input. States have their numbers by type."""
        number = 0 if self.pid == ANY else number_of(self.pid)
        if self.pid == ANY and self.state in (None, "start"):
            return [(ANY, 0, START if self.state else ANY, self.input)]
        rows = []
        for each in self.types:
            index = definition().processes.index(each)
            if self.state in (None, "start"):
                rows.append((index, number, START if self.state else ANY, self.input))
            elif self.state in each.states:
                rows.append((index, number, each.states.index(self.state), self.input))
        return rows


class Interruption:
    """While it is entered, the user's interrupt (SIGINT) goes to the target, at a moment when it
    runs. GDB would take one that comes between two parts of a run for an end of the command, and
    leave the target running."""

    SIGNALS = {SIGINT, SIGUSR2}  # the second one ends the waiting

    def __init__(self):
        self.is_wanted, self.count = False, 0
        self.thread = threading.Thread(target=self.wait, daemon=True)

    def __enter__(self):
        self.mask = pthread_sigmask(SIG_BLOCK, self.SIGNALS)
        self.thread.start()
        return self

    def __exit__(self, *error):
        pthread_kill(self.thread.ident, SIGUSR2)
        self.thread.join()
        pthread_sigmask(SIG_SETMASK, self.mask)

    def wait(self):
        """Of the thread, which must not call GDB itself."""
        while sigwait(self.SIGNALS) == SIGINT:
            self.is_wanted = True
            self.count += 1
            gdb.post_event(self.interrupt)

    def interrupt(self):
        """Called by GDB while it waits for the target, which may stop of itself at that moment. One
        that does not stop is left to GDB."""
        if self.is_wanted:
            gdb.execute("interrupt")
        if self.count > 2:
            pthread_sigmask(SIG_SETMASK, self.mask)


history = History()
trace = Trace()
breakpoints = {}  # by number
last_breakpoint = 0


def add_breakpoint(point):
    """Adds a breakpoint, or finds one that says the same; its number."""
    global last_breakpoint
    for number, each in breakpoints.items():
        if each.text() == point.text():
            return number
    rows = sum(len(each.rows()) for each in [*breakpoints.values(), point])
    if rows > len(indexes(gdb.parse_and_eval("sdl_control.breakpoint"))):
        raise Refusal("The kernel has no room for one more breakpoint.")
    last_breakpoint += 1
    breakpoints[last_breakpoint] = point
    return last_breakpoint


def stands_at_reset():
    """Whether the target has just been reset."""
    return gdb.newest_frame().name() == "reset"


def has_started():
    """Whether the kernel has; memory may still hold what was there before a reset."""
    return bool(value("sdl_has_started")) and not stands_at_reset()


def stands_between_transitions():
    """Whether the target stands where the kernel let it stop."""
    return gdb.newest_frame().name() in ("sdl_stop", "sdl_begin")


def resume(function):
    """Lets the target run until it calls the function. When something else stops it, GDB tells the
    user, and the result is the name of the signal, or empty when it was none; else None."""
    events = []
    note = events.append
    point = gdb.Breakpoint(function, internal=True)
    point.silent = True
    gdb.events.stop.connect(note)
    try:
        gdb.execute("continue")
        is_reached = any(point in getattr(event, "breakpoints", ()) for event in events)
        return None if is_reached else getattr((events or [None])[-1], "stop_signal", "")
    finally:
        gdb.events.stop.disconnect(note)
        point.delete()


def resume_to_stop():
    """As resume(), until the kernel stops. QEMU on a busy machine now and then answers the step off
    a breakpoint without having made it; then it is made again."""
    before = int(value("sdl_control.stop_count"))
    name = resume("sdl_stop")
    while name is None and int(value("sdl_control.stop_count")) == before:
        name = resume("sdl_stop")
    return name


def start():
    """Runs to where the system is about to make its first transition."""
    history.position, history.open, history.is_begun = 0, [], True
    if resume("sdl_begin") is not None:
        raise Refusal("Something stopped the target before the system could start.")


def settle():
    """Lets the kernel end its transition, if it stands in one, and empty its mailbox. Returns as
    resume() does."""
    assign("sdl_control.stop_now", 1)
    return resume_to_stop()


def give_orders(transitions, until):
    """Tells the kernel where to stop."""
    rows = [row for point in breakpoints.values() for row in point.rows()]
    for i, row in enumerate(rows):
        for name, number in zip(("type", "number", "state", "input"), row):
            assign(f"sdl_control.breakpoint[{i}].{name}", number)
    assign("sdl_control.breakpoint_count", len(rows))
    assign("sdl_control.transitions", transitions)
    assign("sdl_control.passes_first", int(transitions > 0))
    assign("sdl_control.until", until)
    assign("sdl_control.keeps_history", int(trace.level > 0))
    assign("sdl_control.history_read", history.position)


def hit_breakpoint():
    """The number of the breakpoint at which the kernel stopped."""
    owners = [number for number, point in breakpoints.items() for _ in point.rows()]
    return owners[int(value("sdl_control.breakpoint_hit"))]


def error_text(transitions):
    """The dynamic error at which the kernel stopped."""
    error, system = value("sdl_error"), definition()
    name = system.signal_name(int(error["signal"]))
    receiver = int(error["receiver"])
    problem = int(error["problem"])
    if problem == TIMERS_FULL:
        text = f"Timer {name} is not set: too many timers are active."
    elif problem == QUEUE_FULL:
        text = f"Signal {name} is lost: the queue of {system.pid_text(receiver)} is full."
    else:
        dead = ", which does not live." if receiver else "."
        text = f"Signal {name} is sent to {system.pid_text(receiver)}{dead}"
    own = [each for each in transitions if each.begin.process == int(error["process"])]
    where = f" in {own[-1].name()}" if own else ""
    return f"Dynamic error{where}, now {time_text(now())}:\n{text}\nStopped"


def end_text(count, transitions):
    """Why the kernel stopped."""
    reason = int(value("sdl_control.reason"))
    if reason == COUNT:
        return "" if count == 1 else "Done"
    if reason == BREAKPOINT:
        number = hit_breakpoint()
        following = ready()[0].transition_text()
        return f"Breakpoint {number} ({breakpoints[number].text()}) before {following}"
    if reason == ERROR:
        return error_text(transitions)
    nothing = "Nothing to do until a signal comes: no transition is ready, no timer is active"
    return {TIME: "Done", NOTHING: nothing}.get(reason, "Interrupted")


def fire(interruption):
    """Lets the target run to where its orders end, telling what happens. The transitions told last,
    and what resume() returns."""
    while True:
        name = resume_to_stop()
        told, lost = history.read()
        trace.show(told, lost)
        if name is None and interruption.is_wanted:
            name = "SIGINT"
        if name is not None or int(value("sdl_control.reason")) != HISTORY_FULL:
            return told, name
        assign("sdl_control.history_read", history.position)


def run(transitions=0, until=FOREVER):
    """Lets the system run: at most so many transitions, or all up to a time, or without end; or
    until a breakpoint, an error or the user stops it."""
    if not has_started():
        start()
    history.begin()
    give_orders(transitions, until)
    before = int(value("sdl_transitions"))
    with Interruption() as interruption:
        told, name = fire(interruption)
        text = end_text(transitions, told) if name is None else "Stopped"
        if name == "SIGINT":
            interruption.is_wanted = False
            text = "Interrupted" if settle() is None else "Interrupted in the middle of a transition"
            trace.show(*history.read())
    count = (int(value("sdl_transitions")) - before) % 2**32
    if text:
        print(f"{text}; transitions: {count}, now: {time_text(now())}.")
