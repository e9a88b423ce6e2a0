"""The SDL system in the target, as the kernel's tables tell of it (kernel.h, kernel_debug.h)."""

import functools

import gdb

START, STOP, ANY, NO_SIGNAL = 0xFD, 0xFE, 0xFF, 0xFE
ENVIRONMENT = 0xFFFFFFFF
FOREVER = 2**64 - 1


class Refusal(Exception):
    """Why a command is not carried out, one sentence for the user."""


def value(expression):
    """The value of a C expression; a structure or an array is read from the target as a whole."""
    result = gdb.parse_and_eval(expression)
    result.fetch_lazy()
    return result


def assign(place, number):
    """Writes a number to a place in the target, which is little-endian. After an assignment of its
    own GDB would read the registers and the stack again."""
    target = gdb.parse_and_eval(place)
    data = (number % 256**target.type.sizeof).to_bytes(target.type.sizeof, "little")
    gdb.selected_inferior().write_memory(int(target.address), data)


def indexes(array):
    """The indexes of an array."""
    return range(array.type.range()[1] + 1)


def numbers(array):
    """The elements of an array of numbers."""
    return [int(array[i]) for i in indexes(array)]


def time_text(time):
    """Seconds with three decimals, as in "12.500"."""
    return f"{time // 1000}.{time % 1000:03}"


def parse_time(word):
    """The milliseconds of a time in seconds with at most three decimals; None for other words."""
    whole, _, decimals = word.partition(".")
    digits = whole + decimals.ljust(3, "0")
    is_time = whole.isdecimal() and len(decimals) <= 3 and not word.endswith(".")
    return int(digits) if is_time and digits.isdecimal() and len(whole) <= 9 else None


def parse_number(word, least, most=2**31 - 1):
    """A whole number between limits; None for other words."""
    is_number = word.removeprefix("-").isdecimal() and len(word) < 20
    return int(word) if is_number and least <= int(word) <= most else None


def find_name(word, names, kind):
    """The index of the name that the word is or begins, in any case of letters."""
    lower = [name.lower() for name in names]
    if word.lower() in lower:
        return lower.index(word.lower())
    found = [i for i, name in enumerate(lower) if word and name.startswith(word.lower())]
    if len(found) == 1:
        return found[0]
    if not found:
        raise Refusal(f'Unknown {kind} "{word}".')
    candidates = ", ".join(names[i] for i in found)
    raise Refusal(f'Ambiguous {kind} "{word}", it may be: {candidates}.')


def number_of(pid):
    """The number of an instance in its process type; 0 for none of them."""
    return pid & 0xFFFFFF


class Sort:
    """The type of a variable or a parameter."""

    def __init__(self, pointer):
        self.name = pointer["name"].string()
        count = int(pointer["literal_count"])
        self.literals = [pointer["literals"][i].string() for i in range(count)]

    def expected(self):
        """What a user may write, for a message about a wrong value."""
        if self.literals:
            return "one of " + ", ".join(self.literals)
        is_number = self.name == "Integer"
        return "a whole number" if is_number else "an instance such as Process:1, or null"


class SignalType:
    """A signal, or the signal of a timer."""

    def __init__(self, row):
        self.name = row["name"].string()
        pointers = [row["parameter"][i] for i in indexes(row["parameter"])]
        self.sorts = [Sort(pointer) for pointer in pointers if pointer]
        self.is_timer = bool(row["is_timer"])

    def text(self):
        """The signal with the sorts of its parameters, as in "Arrive(Integer)"."""
        sorts = ", ".join(sort.name for sort in self.sorts)
        return f"{self.name}({sorts})" if sorts else self.name


class ProcessType:
    """A process type with its states, variables and transitions."""

    def __init__(self, row):
        def rows(name, count):
            return [row[name][i] for i in range(int(row[count]))]

        self.name = row["name"].string()
        self.maximum = int(row["maximum"])
        self.states = [state.string() for state in rows("states", "state_count")]
        variables = rows("variables", "variable_count")
        self.variables = [variable["name"].string() for variable in variables]
        self.sorts = [Sort(variable["sort"]) for variable in variables]
        self.transitions = [
            (int(each["state"]), int(each["input"]), bool(each["body"]))
            for each in rows("transitions", "transition_count")
        ]

    def inputs(self):
        """The signals and timers with a transition or a save, each once."""
        return list(dict.fromkeys(signal for _, signal, _ in self.transitions))

    def saves(self, state, signal):
        """Whether the state leaves the signal in the queue."""
        return (state, signal, False) in self.transitions

    def state_text(self, state):
        """The name of a state."""
        names = {START: "start", STOP: "stop"}
        return names.get(state) or (self.states + ["?"])[min(state, len(self.states))]


class Definition:
    """The definition of the system."""

    def __init__(self):
        system = value("sdl_system")
        self.name = system["name"].string()
        self.signals = [
            SignalType(system["signals"][i]) for i in range(int(system["signal_count"]))
        ]
        self.processes = [
            ProcessType(system["processes"][i].dereference())
            for i in range(int(system["process_count"]))
        ]

    def signal_name(self, signal):
        """The name of a signal or timer."""
        return self.signals[signal].name if signal < len(self.signals) else "?"

    def type_of(self, pid):
        """The process type of an instance; None when it is no instance."""
        index = (pid >> 24) - 1
        return self.processes[index] if 0 <= index < len(self.processes) else None

    def pid_text(self, pid):
        """An instance, as in "Button:2"."""
        if pid in (0, ENVIRONMENT):
            return "env" if pid else "null"
        process = self.type_of(pid)
        return f"{process.name if process else '?'}:{number_of(pid)}"

    def value_text(self, sort, number):
        """A value as the user reads and writes it."""
        if sort.literals:
            return sort.literals[number] if 0 <= number < len(sort.literals) else str(number)
        return str(number) if sort.name == "Integer" else self.pid_text(number)

    def parse_value(self, sort, word):
        """The value of the sort that the word means; None when it means none."""
        lower = [literal.lower() for literal in sort.literals]
        if lower:
            return lower.index(word.lower()) if word.lower() in lower else None
        if sort.name == "Integer":
            return parse_number(word, -(2**31))
        try:
            return 0 if word.lower() == "null" else self.parse_pid(word) or None
        except Refusal:
            return None

    def parse_pid(self, word):
        """An instance, which need not live, or a process with the number 0."""
        name, colon, digits = word.partition(":")
        index = find_name(name, [process.name for process in self.processes], "process")
        number = parse_number(digits, 1, 0xFFFFFF) if colon else 0
        if number is None:
            raise Refusal(f'No instance number in "{word}".')
        return (index + 1) << 24 | number

    def input_text(self, signal, parameters):
        """A signal with the values of its parameters, as in "Lamp(1, Red)"."""
        sorts = self.signals[signal].sorts if signal < len(self.signals) else []
        values = ", ".join(self.value_text(*pair) for pair in zip(sorts, parameters))
        return self.signal_name(signal) + (f"({values})" if values else "")

    def parse_parameters(self, signal, words):
        """The values of a signal's parameters."""
        kind = self.signals[signal]
        if len(words) != len(kind.sorts):
            count = f"{len(kind.sorts)} parameter{'' if len(kind.sorts) == 1 else 's'}"
            raise Refusal(f"Signal {kind.text()} takes {count}, given: {len(words)}.")
        values = [self.parse_value(*pair) for pair in zip(kind.sorts, words)]
        for i, sort in enumerate(kind.sorts):
            if values[i] is None:
                raise Refusal(
                    f"Parameter {i + 1} of {kind.text()} must be {sort.expected()}, "
                    f'not "{words[i]}".'
                )
        return values


@functools.lru_cache(maxsize=1)
def definition():
    """The definition of the program's system; read once for each program."""
    if gdb.lookup_global_symbol("sdl_system") is None:
        raise Refusal('The program has no SDL system; "file crossing.elf" reads one that has.')
    return Definition()


gdb.events.new_objfile.connect(lambda event: definition.cache_clear())
gdb.events.clear_objfiles.connect(lambda event: definition.cache_clear())


class Queued:
    """A signal in a queue."""

    def __init__(self, row):
        self.signal = int(row["type"])
        self.sender = int(row["sender"])
        self.parameters = numbers(row["parameter"])


class Instance:
    """A living instance, as it was when it was read; `place` is that in the kernel's table."""

    def __init__(self, place, row):
        self.place = f"sdl_processes[{place}]"
        self.pid = int(row["id"])
        self.type = definition().type_of(self.pid)
        self.state = int(row["state"])
        self.parent, self.offspring = int(row["parent"]), int(row["offspring"])
        self.sender = int(row["sender"])
        self.variables = numbers(row["variable"])
        room = len(indexes(row["queue"]))
        self.queue = [Queued(row["queue"][i]) for i in range(min(int(row["queued"]), room))]
        self.has_room = len(self.queue) < room
        self.next_ready = int(row["next_ready"])

    def name(self):
        """As in "Button:2"."""
        return definition().pid_text(self.pid)

    def input(self):
        """What the next transition consumes."""
        waiting = [each.signal for each in self.queue]
        taken = (signal for signal in waiting if not self.type.saves(self.state, signal))
        return NO_SIGNAL if self.state == START else next(taken, NO_SIGNAL)

    def transition_text(self):
        """The next transition, as in "Button:1 in Idle at Press"."""
        return transition_text(self.pid, self.state, self.input())


def transition_text(pid, state, signal):
    """A transition, as in "Button:1 in Idle at Press"."""
    at = "" if signal == NO_SIGNAL else f" at {definition().signal_name(signal)}"
    name = definition().pid_text(pid)
    return f"{name} in {definition().type_of(pid).state_text(state)}{at}"


def instances():
    """The living instances, in the order of their types and numbers."""
    table = value("sdl_processes")
    rows = [(i, table[i]) for i in indexes(table)]
    living = [Instance(i, row) for i, row in rows if definition().type_of(int(row["id"]))]
    return sorted(living, key=lambda instance: instance.pid)


def ready():
    """The instances with a transition to make, in their order."""
    by_address = {int(value(f"&{each.place}")): each for each in instances()}
    queue = []
    address = int(value("sdl_first_ready"))
    while address in by_address and len(queue) < len(by_address):
        queue.append(by_address[address])
        address = queue[-1].next_ready
    return queue


def timers():
    """The active timers, each expiry, owner and signal, in the order in which they expire."""
    table = value("sdl_timers")
    count = min(int(value("sdl_timer_count")), len(indexes(table)))
    rows = [table[i] for i in range(count)]
    return [(int(row["expiry"]), int(row["owner"]), int(row["signal"])) for row in rows]


def now():
    """The virtual time."""
    return int(value("sdl_now"))
