"""More mutants of the windows: mistakes in what a user sees of them."""

from mutants import Mutant

CONTROLS = "forms/controls_win.cpp"
CONTRAST = "forms/high_contrast_win.cpp"
FILE = "runtime/random_file_win.cpp"
FOCUS = "forms/focus_keeper_win.h"
LAYOUT = "report/frmMoon_layout.h"
MAIN = "report/frmMoon.cpp"
PLACE = "forms/place_win.cpp"
REPLAY = "forms/drawing_list_win.cpp"
RUN_TIME_END = "runtime/run_time_end_win.cpp"
START = "start/main_win.cpp"
ABOUT = "tray/frmAbout.cpp"
ABOUT_LAYOUT = "tray/frmAbout_layout.h"
WINDOW = "forms/window_win.h"


def mutant(name, file, find, replacement, what):
    return Mutant(name, file, find, replacement, what, True)


LOOK = [
    # --- Fonts and texts
    mutant("font-not-bold", CONTROLS, "font.bold ? FW_BOLD : FW_NORMAL", "FW_NORMAL", "no bold fonts"),
    mutant("font-of-the-cell", CONTROLS, "lfHeight = -ToPixels", "lfHeight = ToPixels", "the height of the whole line"),
    mutant("lines-not-centred", CONTROLS, "DWORD{SS_CENTER}", "DWORD{SS_LEFT}", "cut off at the left edge"),
    mutant("line-font-small", LAYOUT, ".points = 9.75", ".points = 8.25", "the lines in the size of the boxes"),
    mutant("title-of-another-face", ABOUT_LAYOUT, '.face = L"Arial"', '.face = L"MS Sans Serif"', "About's title"),
    mutant("description-small", ABOUT_LAYOUT, ".points = 12", ".points = 8.25", "About's text"),
    mutant("no-font", CONTROLS, "  SendMessageW(hwnd_, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);\n", "",
           "the system's font"),
    # --- The windows
    mutant("no-small-icon", MAIN, "  SendMessageW(hwnd(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallIcon_.get()));\n",
           "", "the big one is scaled down"),
    mutant("big-icon-as-small-one", MAIN, "reinterpret_cast<LPARAM>(smallIcon_.get())", "reinterpret_cast<LPARAM>(icon_.get())",
           "the small icon is the big one"),
    mutant("wait-cursor", WINDOW, "IDC_ARROW", "IDC_WAIT", "the cursor of a busy program"),
    mutant("no-background", WINDOW, "reinterpret_cast<HBRUSH>(INT_PTR{COLOR_3DFACE + 1})", "nullptr", "nothing is erased"),
    mutant("background-by-handle", WINDOW, "reinterpret_cast<HBRUSH>(INT_PTR{COLOR_3DFACE + 1})", "GetSysColorBrush(COLOR_3DFACE)",
           "does not follow a change of colours under Wine"),
    mutant("drawing-without-erasing", MAIN, "forms::DrawingList& frmMoon::Drawing() {\n  InvalidateRect(hwnd(), nullptr, TRUE);",
           "forms::DrawingList& frmMoon::Drawing() {\n  InvalidateRect(hwnd(), nullptr, FALSE);", "the old picture stays below"),
    mutant("maximise-box", MAIN, "WS_MINIMIZEBOX | WS_CLIPCHILDREN", "WS_MINIMIZEBOX | WS_MAXIMIZEBOX | WS_CLIPCHILDREN",
           "a fixed layout in a large window"),
    mutant("about-can-be-resized", ABOUT, "WS_SYSMENU | WS_CLIPCHILDREN", "WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN",
           "a border to drag"),
    mutant("off-centre-across", PLACE, "(work.right - work.left - width) / 2", "(work.right - work.left - width) / 3", "too far left"),
    mutant("off-centre-down", PLACE, "work.top + (work.bottom", "(work.bottom", "a bar at the top is not heeded"),
    mutant("frame-without-edge", CONTROLS, "  DrawEdge(paint.dc(), &edge, EDGE_ETCHED, BF_RECT);\n", "", "no frame to be seen"),
    mutant("frame-sunken", CONTROLS, "EDGE_ETCHED", "EDGE_SUNKEN", "another edge"),
    mutant("timer-of-3-s", LAYOUT, "kTimerInterval = 1000", "kTimerInterval = 3000", "ticks too rarely"),
    mutant("no-second-timer", MAIN, "  Timer2.emplace(hwnd(), kTimer2, layout::kTimerInterval);\n", "", "one timer"),
    mutant("focus-lost-by-minimising", MAIN, "        focus_.Save(hwnd());\n", "", "the first control has it again"),
    mutant("focus-on-the-first-control", FOCUS, "last_ != nullptr ? last_ : GetNext", "GetNext", "nothing is remembered"),
    mutant("minimise-by-the-exact-code", MAIN, "(wParam & 0xFFF0) == SC_MINIMIZE", "wParam == SC_MINIMIZE",
           "a click on the box has low bits"),
    # --- Start
    mutant("start-minimised-ignored", START, "showCommand == SW_SHOWMAXIMIZED ? SW_SHOWNORMAL : showCommand",
           "showCommand >= 0 ? SW_SHOWNORMAL : showCommand", "a shortcut's wish"),
    mutant("start-maximised", START, "showCommand == SW_SHOWMAXIMIZED ? SW_SHOWNORMAL : showCommand);\n  if (IsZoomed(window) != FALSE) {",
           "showCommand);\n  if (false) {", "a fixed layout in a large window"),
    mutant("shown-at-the-end", START, "    if (!runtime::Ending()) {\n      ShowMainWindow", "    {\n      ShowMainWindow",
           "a window comes though the program ends"),
    # --- Run-time errors
    mutant("no-memory-is-internal", RUN_TIME_END, "    return ErrorNumber::OutOfMemory;", "    return ErrorNumber::InternalError;",
           "another error"),
    mutant("box-not-modal", RUN_TIME_END, "MB_TASKMODAL | ", "", "the window takes clicks behind the box"),
    mutant("box-without-icon", RUN_TIME_END, "MB_ICONERROR | ", "", "no icon"),
    mutant("box-not-topmost", RUN_TIME_END, " | MB_TOPMOST", "", "behind other windows"),
    mutant("last-error-counts", RUN_TIME_END, "  if (endedBy) {\n    return;\n  }\n", "", "a later error hides the first"),
    mutant("window-blank-behind-the-box", WINDOW, "runtime::Ending() && message != WM_PAINT", "runtime::Ending()",
           "a window that is not painted any more"),
    # --- Files
    mutant("refused-write-is-success", FILE, "&written, &place) == FALSE) {\n    throw ErrorOf(GetLastError());\n  }\n"
           "  if (written != bytes.size()) {", "&written, &place) != FALSE && written != bytes.size()) {", "nothing is said"),
    mutant("half-a-write-is-success", FILE, "written != bytes.size()", "written > bytes.size()", "nothing is said"),
    mutant("write-protection-is-a-device-error", FILE, "    case ERROR_WRITE_PROTECT:\n", "", "57 for 70"),
    mutant("refused-read-is-empty", FILE, "reason != ERROR_HANDLE_EOF", "reason == 0", "nothing is said"),
    # --- Menu
    mutant("no-null-message", ABOUT, "  PostMessageW(hwnd(), WM_NULL, 0, 0);\n", "", "the next menu closes at once"),
    mutant("menu-in-the-background", ABOUT, "  SetForegroundWindow(hwnd());\n  // The left", "  // The left", "stays open"),
    mutant("right-button-chooses", ABOUT, "TPM_RETURNCMD | TPM_NONOTIFY", "TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON",
           "a double click of it ends the program"),
    # --- Picture
    mutant("ellipse-not-clipped", REPLAY, "    const runtime::ClipScope clip(dc_, ToRect(box));\n", "", "Wine paints beside it"),
    mutant("pen-of-3-pixels", REPLAY, "CreatePen(PS_SOLID, 1, ellipse.outline)", "CreatePen(PS_SOLID, 3, ellipse.outline)", "a thick rim"),
    mutant("ring-in-every-contrast", CONTRAST, "(contrast.dwFlags & HCF_HIGHCONTRASTON) != 0 && ", "", "on every dark background"),
    mutant("ring-on-every-background", CONTRAST, "Dark(GetSysColor(COLOR_3DFACE))",
           "(Dark(GetSysColor(COLOR_3DFACE)) || true)", "in light high contrast, too"),
    mutant("ring-farther-out", MAIN, "kDiscRadius + 1", "kDiscRadius + 3", "off the rim"),
    mutant("ring-over-the-rim", MAIN, "kDiscRadius + 1", "kDiscRadius", "below the picture: unseen"),
    mutant("colours-not-noticed", MAIN, "    case WM_SYSCOLORCHANGE:\n", "", "the ring stays or lacks"),
    mutant("contrast-not-noticed", MAIN,
           "    case WM_SETTINGCHANGE:\n      InvalidateRect(hwnd(), nullptr, TRUE);  // high contrast may have come or gone\n"
           "      [[fallthrough]];\n",
           "      InvalidateRect(hwnd(), nullptr, TRUE);\n      [[fallthrough]];\n    case WM_SETTINGCHANGE:\n",
           "high contrast without a change of colours"),
]
