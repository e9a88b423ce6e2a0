# What GDB needs for the crossing: the tester's words, and the system at its start when a target is
# connected. To be sourced after the program has been read; the words stand beside it.
python
import os
gdb.execute("source " + os.path.join(os.path.dirname(gdb.current_progspace().filename), "sdl.py"))
end
