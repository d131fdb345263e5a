"""The dialog of Z7CashFlow.dll over a voucher screen of a host, which knows nothing of the toolkit, by keys and clicks."""

from cases import main
from screen import Watched

OWN = "Voucher 2013/1/1/6"
TITLE = "Cash-flow rows of the voucher"
ROWS = "rows: 6001 250.5 01"
REFUSED = "closed 70 This program already shows cash-flow rows in a window. Close that window first"
LEAVING = ["own window is active", "live objects of the host: 0", "library unloaded"]


def equal(found, wanted):
    assert found == wanted, f"found {found!r}, wanted {wanted!r}"


def start(screen, program, argument="1"):
    window = Watched(screen, program, argument)
    window.until(top=TITLE)
    return window


def ended(window, *events):
    equal(window.until_ended(), 0)
    equal(window.events(), [*events, *LEAVING])


def the_dialog_opens_five_times_and_the_library_is_unloaded(screen, program):
    window = start(screen, program, "5")
    for opening in range(5):
        window.until(top=TITLE, owner="locked")
        if opening < 4:
            window.click("OK" if opening % 2 == 0 else "Cancel")
            window.until_event(2 * (opening + 1))
    window.keys("F6")
    ended(window, *["closed well", ROWS] * 5)


def the_dialog_is_modal_over_the_screen(screen, program):
    window = start(screen, program)
    window.until(owner="locked")
    x, y, width, _ = window.places["own"]
    window.click((x, y, width, 60))
    window.write("9", focus="Edit", text="9", top=TITLE)
    window.keys("Escape")
    window.until(focus="wxWindowNR")
    window.close_window()
    ended(window, "closed well", ROWS)


def a_wrong_amount_is_refused_in_a_box_and_a_right_one_is_taken(screen, program):
    window = start(screen, program)
    window.keys("Left")
    window.write("99", focus="Edit", text="99")
    window.keys("Return", focus="wxWindowNR")
    window.keys("F6", top="Cash flow")
    assert "250.50" in window.state["prompt"] and "99.00" in window.state["prompt"], window.state
    window.keys("Return", top=TITLE)
    window.keys("Up", "Left")
    window.write("250.5", focus="Edit", text="250.5")
    window.keys("Return", focus="wxWindowNR")
    window.keys("F6")
    ended(window, "closed well", "rows: 6001 250.50 01")


def again(window, *events):
    """Closes the dialog that the host opens at the end."""
    window.until_event(len(events))
    equal(window.events(), list(events))
    window.until(top=TITLE)
    window.keys("F6")


def refused_while_the_dialog_is_open(screen, program, argument):
    window = start(screen, program, argument)
    window.keys("Left")
    window.until_event(1)
    window.click("Cancel")
    events = [REFUSED, "closed well", ROWS, "own loop goes on"]
    again(window, *events)
    ended(window, *events, "closed well")


def a_second_thread_is_refused_while_the_dialog_is_open(screen, program):
    refused_while_the_dialog_is_open(screen, program, "--two-threads")


def the_same_thread_is_refused_while_the_dialog_is_open(screen, program):
    refused_while_the_dialog_is_open(screen, program, "--again")


def the_end_of_the_hosts_message_loop_cancels_the_dialog_and_reaches_the_host(screen, program):
    window = start(screen, program, "--quit")
    window.write("9")
    events = ["closed well", ROWS, "own loop ends"]
    again(window, *events)
    ended(window, *events, "closed well")


def a_dialog_whose_host_window_is_destroyed_is_cancelled(screen, program):
    window = start(screen, program, "--destroy")
    window.write("9")
    events = ["closed well", ROWS, "own loop goes on"]
    again(window, *events)
    equal(window.until_ended(), 0)
    equal(window.events(), [*events, "closed well", "own window is not active", *LEAVING[1:]])


if __name__ == "__main__":
    main([the_dialog_opens_five_times_and_the_library_is_unloaded, the_dialog_is_modal_over_the_screen,
          a_wrong_amount_is_refused_in_a_box_and_a_right_one_is_taken,
          a_second_thread_is_refused_while_the_dialog_is_open, the_same_thread_is_refused_while_the_dialog_is_open,
          the_end_of_the_hosts_message_loop_cancels_the_dialog_and_reaches_the_host,
          a_dialog_whose_host_window_is_destroyed_is_cancelled])
