# For GDB, when it has read the program: the words of a tester, which stand beside the program. The
# system is brought to its start when a target is connected that has just been reset.
python
import os
gdb.execute("source " + os.path.join(os.path.dirname(gdb.current_progspace().filename), "sdl.py"))
thread = gdb.selected_thread()
if thread is not None and not thread.is_running() and not sdl_run.has_started():
    gdb.execute("start-target")
print('The words of a tester have been added: "help user-defined" lists them.')
end
