"""What a window manager makes impossible: for each such case the reason, and exactly what happens instead.

Everything that is not in this table must come out as the rules say, to the pixel.
"""

# Actions on ordinary windows: (window manager, application, action) to a reason and a function from the frame that the
# rules want to the frame that the window really ends with. Empty: every action is exact everywhere.
ACTIONS: dict = {}

# Windows that a window manager has tiled with its own key and does not let go: the reason. The window stays as it is.
TILED = {
    "metacity": "it removes no state from a window that it tiled, ignores every request for its place, and takes it "
    "back to the tile from each other state; only its own key ends that",
}
