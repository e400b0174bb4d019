"""The two progress dialogs: where their controls are, and their templates for the Windows resources."""

# The controls' rectangles: left, top, width, height, in dialog units. A right-to-left template keeps
# the bar and puts the icon on the right.
TALL = {
    "size": (278, 92),
    "status": (10, 52, 254, 21),
    "bar": (10, 73, 257, 10),
    "text": (44, 10, 223, 35),
    "icon": (10, 10, 21, 20),
    "rtl": {"status": (13, 52, 254, 21), "text": (10, 10, 223, 35), "icon": (246, 10, 21, 20)},
}
SHORT = {
    "size": (278, 57),
    "status": (34, 10, 236, 24),
    "bar": (10, 37, 259, 10),
    "text": (44, 10, 223, 35),
    "icon": (10, 10, 20, 20),
    "rtl": {
        "status": (7, 10, 236, 24),
        "bar": (8, 37, 259, 10),
        "icon": (247, 10, 20, 20),
    },
}
DIALOGS = ((101, TALL, True), (103, SHORT, False))

# What a layout adds to the style of the dialog.
LAYOUTS = {
    "ltr": "",
    "mirrored": "EXSTYLE WS_EX_LAYOUTRTL\n",
    "rtl": "EXSTYLE WS_EX_RTLREADING\n",
}


def template(language, number, shape, shows_text):
    font, size = language.font
    rtl = language.layout == "rtl"
    places = {**shape, **shape["rtl"]} if rtl else shape
    rectangle = {key: ", ".join(map(str, places[key])) for key in ("status", "bar", "text", "icon")}
    extended = ", WS_EX_RTLREADING | WS_EX_RIGHT" if rtl else ""
    visible = "WS_VISIBLE" if shows_text else "NOT WS_VISIBLE"
    width, height = shape["size"]
    return (
        f"{number} DIALOGEX 0, 0, {width}, {height}\n"
        "STYLE WS_POPUP | WS_CAPTION | DS_MODALFRAME | DS_SETFONT\n"
        f"{LAYOUTS[language.layout]}"
        'CAPTION ""\n'
        f'FONT {size}, "{font}"\n'
        "BEGIN\n"
        f'  CONTROL "", 1000, "STATIC", SS_LEFT | SS_NOPREFIX | WS_CHILD | WS_VISIBLE | WS_GROUP, {rectangle["status"]}{extended}\n'
        f'  CONTROL "", 1001, PROGRESS_CLASSA, WS_CHILD | WS_VISIBLE, {rectangle["bar"]}\n'
        f'  CONTROL "", 1004, "STATIC", SS_LEFT | SS_NOPREFIX | WS_CHILD | {visible} | WS_GROUP, {rectangle["text"]}{extended}\n'
        f'  CONTROL 102, -1, "STATIC", SS_ICON | WS_CHILD | WS_VISIBLE, {rectangle["icon"]}\n'
        "END\n"
    )


def templates(language):
    return "".join(template(language, *row) for row in DIALOGS)
