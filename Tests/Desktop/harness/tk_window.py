#!/usr/bin/python3
"""A window made with the Tk toolkit, which maps it before it sets its name and moves it while it starts."""

import tkinter

root = tkinter.Tk(className="Tkwindow")
root.title("A window made with Tk")
root.geometry("520x360+260+190")
tkinter.Label(root, text="This window takes any size.").pack(padx=24, pady=24)
root.mainloop()
