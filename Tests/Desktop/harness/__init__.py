"""A real desktop for tests: server, session, window manager, applications, key presses, and ways to read the result.

The harness knows nothing about how the program under test works. It starts the program, the X server sends it key
presses, and the harness reads the result from the X server.
"""
