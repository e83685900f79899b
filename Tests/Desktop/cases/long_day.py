"""The short form of the simulated day; `Tests/Desktop/long-day` is the whole one."""

from harness.long_day import Amounts, live_a_day

from . import case


@case("desktop.long-day")
def after_a_day_of_everything_it_holds_no_more_and_has_lost_nothing(program):
    samples = []
    kills = live_a_day(program, Amounts(presses=1200, openings=120, restarts=12, kills=25), samples.append, seed=1)
    held = [(sample.holdings.private, sample.holdings.descriptors) for sample in samples]
    print(f"private dirty KiB and descriptors: {held}; {kills.interrupted} kills came while rules were written")
    assert kills.interrupted > 0, "no kill came while rules were written"
