"""A real desktop for tests: server, session, window manager, applications, keys that are really pressed, and eyes.

Nothing in here knows how the program under test works. It is started, it gets key presses from the X server, and what
it did is read back from the X server.
"""
