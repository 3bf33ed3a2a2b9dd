"""The end-to-end bench: runs the finished Tidewell.exe and looks at it from outside.

folders.py   where the bench puts things
tools.py     builds the native helpers in native/
waiting.py   waits for a condition
display.py   the virtual screen with a tray: mouse, pictures, docked icons
wine.py      the Wine prefix and the locales
driver.py    requests to the helper program inside Windows
clock.py     the movable clock
program.py   one run of Tidewell: its windows, tray calls and report
user.py      what a user does and sees, in several steps
typewriter.py  another program to type into
failures.py  what the functions of Windows return when they fail
faults.py    runs the program from start to end while calls fail
fault_choice.py   chooses these calls
fault_verdict.py  judges such a run
oracle.py    the expected report
settings_file.py  where the options stand in the settings file
"""
