import time
from bench.driver import *
def test_probe(bench, start):
    d=bench.driver
    p=start()
    pids=d.processes("explorer.exe")
    for x in pids: print(d.end(x))
    time.sleep(.5)
    q=bench.wine.start("explorer.exe","/desktop",log="/tmp/e2x/exp.log")
    time.sleep(3)
    print("new", d.processes("explorer.exe"), bench.display.docked_icons(), p.ended, [ (c.command,c.succeeded) for c in p.calls()])
    p.clock.advance(minutes=1); p.hurry(); time.sleep(2)
    print("minute", d.processes("explorer.exe"), bench.display.docked_icons(), p.ended, [ (c.command,c.succeeded) for c in p.calls()])
    p.display.click(*p.icon_centre()); time.sleep(1); print(p.main().shown)
    p.display.click(*p.icon_centre()); time.sleep(1); print(p.main().shown)
    bench.display.save("/tmp/e2x/p.png")
def test_after(program):
    print(program.display.docked_icons(), program.driver.processes("explorer.exe"))
    program.display.click(*program.icon_centre()); time.sleep(1); print(program.main().shown)
