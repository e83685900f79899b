"""The limits of window managers: for each such case the reason, and the exact result instead.

Everything that is not in this table must match the rules, to the pixel.
"""

# Actions on ordinary windows: maps (window manager, application, action) to a reason and a function from the expected
# frame to the final frame of the window. Empty: every action is exact everywhere.
ACTIONS: dict = {}

# Window managers that do not release a window that they have tiled with their own key, with the reason. The window
# stays as it is.
TILED = {
    "metacity": "it removes no state from a window that it tiled, ignores every request for its place, and takes it "
    "back to the tile from each other state; only its own key ends that",
}
