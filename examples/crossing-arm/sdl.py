"""A tester's words for GDB: they show and run the target as the SDL system that it is.

`source sdl.py` brings them, `help user-defined` lists them.
"""

import os
import sys

import gdb

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
for module in ("sdl_run", "sdl_target", "sdl_word"):
    sys.modules.pop(module, None)  # is read anew with this file

import sdl_run
from sdl_target import (
    NO_SIGNAL, Refusal, assign, definition, find_name, instances, now, parse_number, parse_time,
    ready, time_text, timers, value,
)
from sdl_word import ask, ask_text, can_ask, columns, counted, living, nothing, target, word

UNSIGNED_MAX = 2**32 - 1
MAIL_SIGNAL, MAIL_SET, MAIL_RESET = range(3)  # of kernel_debug.h


@word("list-process", "[<process>]")
def list_process(process=None):
    """Lists the living process instances."""
    kind = None if process is None else definition().type_of(definition().parse_pid(process))
    chosen = [each for each in instances() if kind in (None, each.type)]
    columns(
        [(each.name(), each.type.state_text(each.state), f"queue {len(each.queue)}")
         for each in chosen],
        "No living instance.",
    )


@word("list-queue", "[<instance>]")
def list_queue(instance=""):
    """Lists the signals in the input queues."""
    chosen = [each for each in (living(instance, True) if instance else instances()) if each.queue]
    for each in chosen:
        print(f"{each.name()} in {each.type.state_text(each.state)}:")
        rows = []
        for queued in each.queue:
            is_timer = definition().signals[queued.signal].is_timer
            sender = definition().pid_text(queued.sender) if queued.sender else "env"
            rows.append((
                definition().input_text(queued.signal, queued.parameters),
                "timer" if is_timer else f"from {sender}",
                "saved" if each.type.saves(each.state, queued.signal) else "",
            ))
        columns(rows, indent="  ")
    if not chosen:
        print("All queues are empty.")


@word("list-timer")
def list_timer():
    """Lists the active timers."""
    columns(
        [(definition().pid_text(owner), definition().signal_name(signal), "at " + time_text(expiry))
         for expiry, owner, signal in timers()],
        "No timer is active.",
    )


@word("list-signal", needs=nothing)
def list_signal():
    """Lists the signals with their parameters."""
    for each in definition().signals:
        if not each.is_timer:
            print(each.text())


@word("list-ready")
def list_ready():
    """Lists the transitions that are ready now."""
    rows = []
    for each in ready():
        signal = each.input()
        name = "" if signal == NO_SIGNAL else definition().signal_name(signal)
        rows.append((each.name(), each.type.state_text(each.state), name))
    columns(rows, "No transition is ready; the next timer has to expire first.")


@word("list-definition", needs=nothing)
def list_definition():
    """Lists the process types, their states and inputs."""
    for each in definition().processes:
        print(f"{each.name}, at most {each.maximum}")
        print("  states: " + ", ".join(each.states))
        print("  inputs: " + ", ".join(map(definition().signal_name, each.inputs())))


@word("list-history", "[<count>]")
def list_history(count="20"):
    """Lists the last transitions, 20 without a count.
    It tells as much of them as the trace would; runs need no trace for it."""
    number = parse_number(count, 1)
    if number is None:
        raise Refusal(f'"{count}" is no whole number from 1 up.')
    transitions = sdl_run.History().read()[0][-number:]
    for each in transitions:
        print(each.text(max(1, sdl_run.trace.level)))
    if not transitions:
        print("There was no transition yet.")


@word("show-instance", "[<instance>]")
def show_instance(instance=""):
    """Shows an instance, its timers and variables."""
    text = definition().pid_text
    for each in living(instance):
        print(f"Instance {each.name()} in {each.type.state_text(each.state)}")
        print(f"  parent {text(each.parent)}, offspring {text(each.offspring)}, "
              f"sender {text(each.sender)}, queue {len(each.queue)}")
        for expiry, owner, signal in timers():
            if owner == each.pid:
                print(f"  timer {definition().signal_name(signal)} at {time_text(expiry)}")
        columns(
            [(name, sort.name, definition().value_text(sort, number))
             for name, sort, number in zip(each.type.variables, each.type.sorts, each.variables)],
            indent="  ",
        )


@word("now")
def show_now():
    """Shows the virtual time in seconds."""
    print("now = " + time_text(now()))


@word("next-transition", "[<count>]", target)
def next_transition(count="1"):
    """Fires the next transition, or so many."""
    number = parse_number(count, 1, UNSIGNED_MAX)
    if number is None:
        raise Refusal(f'"{count}" is no whole number from 1 up.')
    sdl_run.run(transitions=number)


@word("go", needs=target)
def go():
    """Runs until a breakpoint, an error or nothing is left to do."""
    sdl_run.run()


@word("proceed-until", "<time>", target)
def proceed_until(time):
    """Runs until the time in seconds, or a breakpoint."""
    until = parse_time(time)
    present = now() if sdl_run.has_started() else 0
    if until is None or until < present:
        raise Refusal(f'"{time}" is no time in seconds from {time_text(present)} on.')
    sdl_run.run(until=until)


@word("start-target", needs=target)
def start_target():
    """Runs the target to where its system begins."""
    if sdl_run.has_started():
        raise Refusal("The system has been started before.")
    sdl_run.start()
    print("The system stands at its start.")


@word("restart-target", needs=target)
def restart_target():
    """Resets the target and begins anew; breakpoints and trace stay.
    GDB's command for the reset stands in $sdl_reset; without it "monitor system_reset", QEMU's."""
    lost = sum(len(each.queue) for each in instances()) if sdl_run.has_started() else 0
    command = gdb.convenience_variable("sdl_reset")
    gdb.execute(command.string() if command else "monitor system_reset", to_string=True)
    gdb.execute("maintenance flush register-cache", to_string=True)  # GDB knows of no reset
    sdl_run.start()
    print("The system stands at its start again.")
    if lost:
        print(f"Lost by the restart: {counted(lost, 'queued signal')}.")


def post(kind, receiver, signal, parameters=(), delay=0):
    """Puts a letter into the kernel's mailbox. The kernel takes it at once when it stands between
    two transitions; true then."""
    if value("sdl_mail.is_full"):
        raise Refusal("The mailbox is full: let the transition end first.")
    fields = {"kind": kind, "receiver": receiver.pid, "signal": signal, "delay": delay}
    fields.update({f"parameter[{i}]": number for i, number in enumerate(parameters)})
    for name, number in fields.items():
        assign(f"sdl_mail.{name}", number)
    assign("sdl_mail.is_full", 1)
    if not sdl_run.stands_between_transitions():
        return False
    return sdl_run.settle() is None


def tell_posted(text, is_taken):
    """Tells what was done by mail."""
    print(text if is_taken else text + " when the transition has ended")


@word("send", "[<signal> [<instance> [<parameter>...]]]")
def send(signal=None, instance="", *parameters):
    """Sends a signal from the environment."""
    signals = [each for each in definition().signals if not each.is_timer]
    if signal is None:
        index = ask("Signal to send:", [each.text() for each in signals])
    else:
        index = find_name(signal, [each.name for each in signals], "signal")
    receiver = living(instance)[0]
    chosen = signals[index]
    if chosen.sorts and not parameters and can_ask():
        expected = ", ".join(f"{sort.name}: {sort.expected()}" for sort in chosen.sorts)
        parameters = ask_text(f"Parameters of {chosen.name} to {receiver.name()} ({expected}):")
    number = definition().signals.index(chosen)
    values = definition().parse_parameters(number, parameters)
    if not receiver.has_room:
        raise Refusal(f"The queue of {receiver.name()} is full.")
    is_taken = post(MAIL_SIGNAL, receiver, number, values)
    tell_posted(f"{definition().input_text(number, values)} sent to {receiver.name()}", is_taken)


def timer_of(instance, name):
    """The one instance that a word means, and its timer."""
    owner = living(instance)[0]
    own = [each for each in owner.type.inputs() if definition().signals[each].is_timer]
    return owner, own[find_name(name, [definition().signal_name(each) for each in own], "timer")]


@word("set-timer", "<instance> <timer> <seconds>")
def set_timer(instance, timer, seconds):
    """Sets a timer of an instance to so many seconds from now."""
    owner, signal = timer_of(instance, timer)
    delay = parse_time(seconds)
    if delay is None or delay > UNSIGNED_MAX:
        raise Refusal(f'"{seconds}" is no duration in seconds.')
    is_taken = post(MAIL_SET, owner, signal, delay=delay)
    name = definition().signal_name(signal)
    tell_posted(f"{owner.name()} {name} set to {time_text(now() + delay)}", is_taken)


@word("reset-timer", "<instance> <timer>")
def reset_timer(instance, timer):
    """Resets a timer of an instance."""
    owner, signal = timer_of(instance, timer)
    is_taken = post(MAIL_RESET, owner, signal)
    tell_posted(f"{owner.name()} {definition().signal_name(signal)} reset", is_taken)


@word("assign-variable", "[<instance> [<variable> [<value>]]]")
def assign_variable(instance="", variable=None, text=None):
    """Changes a variable."""
    owner = living(instance)[0]
    names = owner.type.variables
    if variable is None:
        index = ask(f"Variable of {owner.name()}:", names)
    else:
        index = find_name(variable, names, "variable")
    sort = owner.type.sorts[index]
    if text is None:
        present = definition().value_text(sort, owner.variables[index])
        answer = ask_text(f"Value of {names[index]} of {owner.name()}, now {present} "
                          f"({sort.expected()}):")
        text = " ".join(answer)
    number = definition().parse_value(sort, text)
    if number is None:
        raise Refusal(f'Variable {names[index]} must be {sort.expected()}, not "{text}".')
    assign(f"{owner.place}.variable[{index}]", number)
    print(f"{owner.name()} {names[index]} := {definition().value_text(sort, number)}")


@word("set-breakpoint", "<process> [<state> [<signal>]]", nothing)
def set_breakpoint(*words):
    """Stops runs before a transition; * stands for any."""
    point = sdl_run.Breakpoint(words)
    number = sdl_run.add_breakpoint(point)
    print(f"Breakpoint {number}: {point.text()}")


@word("list-breakpoint", needs=nothing)
def list_breakpoint():
    """Lists the breakpoints."""
    rows = [(str(number), point.text()) for number, point in sdl_run.breakpoints.items()]
    columns(rows, "No breakpoint is set.")


@word("remove-breakpoint", "[<number>]", nothing)
def remove_breakpoint(number=None):
    """Removes a breakpoint, or with * all."""
    points = sdl_run.breakpoints
    if number is None and points:
        items = [point.text() for point in points.values()]
        number = str(list(points)[ask("Breakpoint to remove:", items)])
    removed = [each for each in points if number in ("*", str(each))]
    for each in removed:
        del points[each]
    if number is None:
        print("No breakpoint is set.")
    elif not removed:
        print(f'There is no breakpoint "{number}".')
    else:
        print(f"Removed: {counted(len(removed), 'breakpoint')}.")


@word("set-trace", "<level>", nothing)
def set_trace(level):
    """Sets what runs tell: 0 nothing, 1 transitions, 2 also signals, 3 also timers and tasks."""
    number = parse_number(level, 0)
    if number is None:
        raise Refusal(f'"{level}" is no whole number from 0 up.')
    if number > 3:
        raise Refusal("The highest trace level is 3.")
    sdl_run.trace.level = number
    print(sdl_run.trace.text())


@word("mask-trace", "[<process>...]", nothing)
def mask_trace(*words):
    """Traces these processes only, or with * all."""
    names = [each.name for each in definition().processes]
    if not words:
        words = [names[ask("Process to trace:", names)]]
    everything = list(words) == ["*"]
    sdl_run.trace.mask = None if everything else {
        names[find_name(each, names, "process")] for each in words}
    print(sdl_run.trace.text())


@word("list-trace", needs=nothing)
def list_trace():
    """Shows how much runs tell."""
    print(sdl_run.trace.text())
