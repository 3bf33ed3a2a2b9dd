"""The mutants of the windows: mistakes in what the program does as a window, and in what a user sees of it."""

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
CODE_PAGE = "runtime/code_page_win.cpp"
LOCALE = "runtime/locale_names_win.cpp"
LOOP = "forms/window_win.cpp"
ONE_COPY = "start/previous_instance_win.h"
SETTINGS_FILE = "report/settings_file_win.cpp"
TIMER = "forms/timer_win.h"
TRAY = "tray/tray_icon_win.cpp"
WINDOW = "forms/window_win.h"


def mutant(name, file, find, replacement, what):
    return Mutant(name, file, find, replacement, what, True)


WINDOW_MUTANTS = [
    # --- What the windows do
    mutant("main-not-topmost", MAIN, "  forms::MakeTopmost(hwnd());\n", "", "a step left out"),
    mutant("southern-view-without-click", MAIN, "    Check1_Click(2);", "", "the offset is not read at the start"),
    mutant("southern-view-not-restored", MAIN, "    controls_->Check1.at(2).SetState(1);\n", "", "the box stays unticked"),
    mutant("first-icon-modified", MAIN, "ReportAndUpdateIcon(0)", "ReportAndUpdateIcon(1)",
           "the icon is not added"),
    mutant("timer-every-tick", MAIN, "  LastUpdate = now;\n", "", "each tick updates"),
    mutant("other-timer-counts", MAIN, "if (wParam == kTimer1) {", "if (wParam != 0) {", "Timer2 updates, too"),
    mutant("clock-change-not-noticed", MAIN, "    refreshAtTick_ = true;\n", "", "a step left out"),
    mutant("resume-not-noticed", MAIN, "      return wParam == PBT_APMRESUMEAUTOMATIC;", "      return false;", "after sleep"),
    mutant("locale-not-noticed", MAIN, "== L\"intl\"", "== L\"int1\"", "a changed locale"),
    mutant("offset-not-read", MAIN, "  mMoon::OffsetMinutes = mMoon::LocalTimeOffset();\n", "",
           "a step left out"),
    mutant("click-does-not-read", MAIN,
           "  settingsFile_->Read();  // whatever another writer has changed since is kept\n",
           "", "another writer's change is lost"),
    mutant("click-does-not-write", MAIN, "  settingsFile_->Write();\n", "", "the option is not stored"),
    mutant("click-stores-the-other-option", MAIN, "      Settings.RestoreInTray = option;", "      Settings.AutoStart = option;",
           "two options change places"),
    mutant("stored-option-decides", MAIN, "if (controls_->Check1.at(0).State() == 1) {",
           "if (StateFromOption(Settings.RestoreInTray) == 1) {", "not the box as it stands"),
    mutant("session-end-hides", MAIN, "        EndProgram();  // the end of the session",
           "        Unload();  // the end",
           "the end of the session hides the window"),
    mutant("cancelled-session-end", MAIN, "      if (wParam != FALSE) {", "      if (wParam != FALSE || lParam == 0) {",
           "ends although the session goes on"),
    mutant("south-for-any-option", MAIN, "return StateFromOption(Settings.SouthernView) == 1;",
           "return Settings.SouthernView != runtime::False;", "any option but 0"),
    mutant("icon-left-behind", MAIN, "  about_.UpdateMoonIcon(2, IcoNum);\n", "", "the icon is not deleted"),
    mutant("picture-28", ABOUT, "IcoNum >= layout::kPicMoonCount", "IcoNum > layout::kPicMoonCount", "one icon too far"),
    mutant("negative-icon", ABOUT,
           "    throw runtime::RuntimeError(runtime::ErrorNumber::ControlArrayElementDoesNotExist);\n",
           "    IcoNum = 0;\n", "no error"),
    mutant("task-bar-not-noticed", ABOUT, "    trayIcon_.Restore();\n", "",
           "the icon is not added to a new task bar"),
    mutant("about-really-closes", ABOUT, "  Cancel = true;\n  ShowWindow(hwnd(), SW_HIDE);", "  Cancel = true;",
           "About is not hidden"),
    mutant("about-not-topmost", ABOUT, "  forms::MakeTopmost(hwnd());\n", "", "a step left out"),
    mutant("left-release-only-shows", ABOUT, "mainForm_.Visible() ? mainForm_.Hide() : mainForm_.Show();", "mainForm_.Show();",
           "the main window is not hidden"),
    mutant("right-release-does-nothing", ABOUT, "    case kRightButtonUp:\n      PopupMenu();\n", "    case kRightButtonUp:\n",
           "the menu does not open"),
    mutant("escape-does-nothing", ABOUT, "id == layout::kCmdOK || id == IDCANCEL", "id == layout::kCmdOK", "Escape"),
    mutant("brush-never-deleted", REPLAY, "const runtime::unique_brush brush(CreateSolidBrush(pie.fill));\n"
           "    const runtime::SelectScope selectPen(dc_, pen.get());\n"
           "    const runtime::SelectScope selectBrush(dc_, brush.get());",
           "const HBRUSH brush = CreateSolidBrush(pie.fill);\n"
           "    const runtime::SelectScope selectPen(dc_, pen.get());\n"
           "    const runtime::SelectScope selectBrush(dc_, brush);", "each repaint leaves a brush behind"),
    mutant("box-behind-the-window", RUN_TIME_END, "  EnumThreadWindows(GetCurrentThreadId(), LetTheBoxCover, 0);\n",
           "", "a step left out"),
    mutant("menu-under-the-box", RUN_TIME_END, "  EndMenu();\n", "", "the menu keeps the mouse"),
    mutant("box-in-the-handler", RUN_TIME_END, "    End();\n  }\n",
           "    End();\n    ReportRunTimeError();\n  }\n", "the box opens in the middle of a menu"),
    mutant("menu-twice", ABOUT, "  menuOpen_ = true;\n", "", "the menu opens over itself"),
    mutant("every-tick-after-a-notice", MAIN, "  refreshAtTick_ = false;\n", "", "updates without end"),
    mutant("pointing-takes-the-keyboard", ABOUT, "      if (makingTopmost_) {", "      if (false) {", "a hidden window has it"),
    mutant("minimised-start-takes-the-keyboard", MAIN, "!Visible() && (change.flags & SWP_SHOWWINDOW) == 0", "false",
           "placing the window activates it"),
    mutant("pointer-in-the-window-clicks", ABOUT, " || !MayBeOfTheIcon(Y)", "", "over a wide About box"),
    mutant("about-not-centred", ABOUT, "  forms::Centre(hwnd(), mainForm_.WorkArea());\n", "", "on another screen"),
    mutant("about-completed-again", ABOUT, "  if (controls_) {\n    return;\n  }\n", "", "moved back whenever it is shown"),
    mutant("about-without-focus", ABOUT, "  if (GetFocus() == hwnd()) {", "  if (false) {", "after the menu, no button"),
    mutant("one-picture", ABOUT, "IDI_PHASE0 + index", "IDI_PHASE0", "the New Moon always"),
    mutant("picture-loaded-again", ABOUT, "  if (!picture) {", "  {", "the shell's handle is destroyed"),
    mutant("pictures-not-shown", ABOUT,
           "    controls_->picMoon.at(static_cast<std::size_t>(index)).SetPicture(Picture(index));\n", "", "empty holders"),
    mutant("lost-window-is-seen", PLACE, "MONITOR_DEFAULTTONULL", "MONITOR_DEFAULTTONEAREST", "comes back where no screen is"),
    mutant("lost-window-shown-there", PLACE, "return wParam != FALSE;", "return false;", "shown where no screen is"),
    mutant("lost-window-restored-there", PLACE, "wParam == SIZE_RESTORED", "false", "restored where no screen is"),
    mutant("lost-window-stays-there", PLACE, "return IsWindowVisible(window) != FALSE;", "return false;",
           "a change of the screens is not noticed"),
    mutant("hidden-window-moved", PLACE, "return IsWindowVisible(window) != FALSE;", "return true;", "its screen may come back"),
    mutant("minimised-window-is-lost", PLACE, "IsIconic(window) == FALSE &&", "true &&", "a minimised window is moved"),
    mutant("centring-resizes", PLACE, "SWP_NOSIZE | ", "", "a window of no size"),
    mutant("icon-left-by-a-quit", START, "  frmMoon.EndProgram();\n", "", "a loop that ends by itself"),
    mutant("narrow-ellipses-by-the-system", REPLAY, "kNarrow = 10", "kNarrow = 0", "Wine paints stray pixels"),
    mutant("narrow-ellipse-to-the-left", REPLAY, ".right = box.right - inset", ".right = box.right - inset - 1", "a column less"),
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
    mutant("no-small-icon", MAIN, "{ICON_SMALL, ICON_BIG}", "{ICON_BIG}", "the big one is scaled down"),
    mutant("big-icon-as-small-one", MAIN, "size == ICON_SMALL ? smallIcon_ : icon_", "size == ICON_SMALL ? icon_ : icon_",
           "the small icon is the big one"),
    mutant("wait-cursor", WINDOW, "IDC_ARROW", "IDC_WAIT", "the cursor of a busy program"),
    mutant("no-background", WINDOW, "reinterpret_cast<HBRUSH>(INT_PTR{COLOR_3DFACE + 1})", "nullptr", "nothing is erased"),
    mutant("background-by-handle", WINDOW, "reinterpret_cast<HBRUSH>(INT_PTR{COLOR_3DFACE + 1})", "GetSysColorBrush(COLOR_3DFACE)",
           "does not follow a change of colours under Wine"),
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
    mutant("focus-lost-by-minimising", FOCUS, "    Save(form, reinterpret_cast<HWND>(wParam));\n", "",
           "the first control has it again"),
    mutant("focus-stays-on-the-form", FOCUS, "IsIconic(form) == FALSE", "false", "no control has it"),
    mutant("focus-on-the-first-control", FOCUS, "last_ != nullptr ? last_ : first", "first", "nothing is remembered"),
    # --- Start
    mutant("start-minimised-ignored", START, "showCommand == SW_SHOWMAXIMIZED ? SW_SHOWNORMAL : showCommand",
           "showCommand >= 0 ? SW_SHOWNORMAL : showCommand", "a shortcut's wish"),
    mutant("start-maximised", START, "showCommand == SW_SHOWMAXIMIZED ? SW_SHOWNORMAL : showCommand);\n  if (IsZoomed(window) != FALSE) {",
           "showCommand);\n  if (false) {", "a fixed layout in a large window"),
    mutant("shown-at-the-end", START, "    if (!runtime::Ending()) {\n      ShowMainWindow", "    {\n      ShowMainWindow",
           "a window comes though the program ends"),
    mutant("restart-not-asked-for", START, "  AskToBeRestarted();\n", "", "an installer leaves it ended"),
    mutant("restart-after-a-hang", START, " | RESTART_NO_HANG", "", "it hangs again"),
    # --- Run-time errors
    mutant("no-memory-is-internal", RUN_TIME_END, "    return ErrorNumber::OutOfMemory;", "    return ErrorNumber::InternalError;",
           "another error"),
    mutant("box-not-modal", RUN_TIME_END, "MB_TASKMODAL | ", "", "the window takes clicks behind the box"),
    mutant("box-without-icon", RUN_TIME_END, "MB_ICONERROR | ", "", "no icon"),
    mutant("box-not-topmost", RUN_TIME_END, " | MB_TOPMOST", "", "behind other windows"),
    mutant("last-error-counts", RUN_TIME_END, "  if (!endedBy) {\n    endedBy = ", "  {\n    endedBy = ", "a later error hides the first"),
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
    mutant("ring-farther-out", MAIN, "kDiscCentre, kDiscRadius + 1", "kDiscCentre, kDiscRadius + 3", "off the rim"),
    mutant("ring-over-the-rim", MAIN, "kDiscCentre, kDiscRadius + 1", "kDiscCentre, kDiscRadius", "below the picture: unseen"),
    mutant("colours-not-noticed", MAIN, "message == WM_SYSCOLORCHANGE || ", "", "the ring stays or lacks"),
    mutant("contrast-not-noticed", MAIN, " || message == WM_SETTINGCHANGE", "", "high contrast without a change of colours"),
    # --- What the system is asked, and told
    mutant("resolution-not-read", CONTROLS, "GetDeviceCaps(screen.dc(), LOGPIXELSX)", "96", "a screen of another resolution"),
    mutant("resolution-of-the-other-axis", CONTROLS, "GetDeviceCaps(screen.dc(), LOGPIXELSY)",
           "GetDeviceCaps(screen.dc(), LOGPIXELSX)", "pixels that are not square"),
    mutant("font-of-ansi-characters", CONTROLS, "DEFAULT_CHARSET", "ANSI_CHARSET", "Greek month names"),
    mutant("caption-written-again", CONTROLS, "  if (caption != Caption()) {", "  {", "all lines flicker every minute"),
    mutant("frame-out-of-the-tab-order", CONTROLS, ".exStyle = WS_EX_CONTROLPARENT", ".exStyle = 0", "no way in by keyboard"),
    mutant("dialog-keys-to-the-control", LOOP, "GetAncestor(message.hwnd, GA_ROOT)", "message.hwnd", "Tab does nothing"),
    mutant("timer-not-stopped", TIMER, "KillTimer(window_, id_);", "", "it ticks on"),
    mutant("blue-as-bright-as-red", CONTRAST, "299 * GetRValue(colour) + 587 * GetGValue(colour) + 114 * GetBValue(colour)",
           "299 * GetBValue(colour) + 587 * GetGValue(colour) + 114 * GetRValue(colour)", "the bytes of a colour turned round"),
    mutant("bars-not-heeded", PLACE, "return monitor.rcWork;", "return monitor.rcMonitor;", "About below the task bar"),
    mutant("monitor-record-without-size", PLACE, "  monitor.cbSize = sizeof monitor;\n", "", "the system tells nothing"),
    mutant("minimised-window-only-shown", PLACE, "IsIconic(window) != FALSE ? SW_RESTORE : SW_SHOW", "SW_SHOW",
           "stays minimised"),
    mutant("handlers-behind-the-box", WINDOW, "self == nullptr || (runtime::Ending() && message != WM_PAINT)",
           "self == nullptr", "the program goes on behind its error"),
    mutant("closed-behind-the-box", WINDOW, "runtime::Ending() && message == WM_CLOSE ? 0 : ", "", "the window goes before the box"),
    mutant("higher-rights-miss-the-task-bar", ABOUT,
           "  ChangeWindowMessageFilterEx(hwnd(), taskbarCreated_, MSGFLT_ALLOW, nullptr);\n", "", "no icon on a new task bar"),
    mutant("window-for-no-icon", ABOUT, "command == TrayCommand::Delete ? !trayIcon_.Wanted() : runtime::Ending()",
           "command != TrayCommand::Delete && runtime::Ending()", "an early error makes the About window"),
    mutant("icon-changed-in-the-end", ABOUT, "!trayIcon_.Wanted() : runtime::Ending()", "!trayIcon_.Wanted() : false",
           "by a handler that was interrupted"),
    mutant("never-activated-again", ABOUT, "  makingTopmost_ = false;\n", "", "About comes without the keyboard"),
    mutant("menu-once", ABOUT, "  menuOpen_ = false;\n", "", "a flag that stays"),
    mutant("ok-is-not-the-default", ABOUT, "      return MAKELRESULT(layout::kCmdOK, DC_HASDEFID);\n", "      return 0;\n",
           "Enter"),
    mutant("shells-record-not-read", TRAY, "  mMoon::TrayIconData = Unpack(bytes, codePage);\n", "",
           "what the shell has written is lost"),
    mutant("enter-closes-from-anywhere", MAIN, "GetFocus() == controls_->Command1.hwnd() ?", "true ?", "the program ends by accident"),
    mutant("picture-not-redrawn", MAIN, "InvalidateRect(window_, &picture, FALSE);  // its first circle covers the old one\n", "(void)picture;\n",
           "the old picture until something covers it"),
    mutant("picture-redrawn-each-minute", MAIN, "drawing_.Primitives() != before_", "true", "an update takes twice as long"),
    mutant("end-behind-the-icon", MAIN, "  runtime::End();  // first: the shell may send more of the icon's messages while it takes the icon away\n"
           "  std::int16_t IcoNum = 0;\n  about_.UpdateMoonIcon(2, IcoNum);\n",
           "  std::int16_t IcoNum = 0;\n  about_.UpdateMoonIcon(2, IcoNum);\n  runtime::End();\n",
           "a message meanwhile brings the icon back"),
    mutant("file-open-behind-the-box", MAIN, "  settingsFile_.reset();\n", "", "held until the user presses OK"),
    mutant("notice-without-a-text", MAIN, "lParam != 0 && ", "", "reads at address 0"),
    mutant("focus-of-a-minimised-window", FOCUS, "} else if (HIWORD(wParam) == 0) {", "} else {", "the focus is unseen"),
    mutant("focus-of-another-window", FOCUS, "IsChild(form, focus) != FALSE ? focus : last_", "focus", "it is remembered as none"),
    mutant("one-copy-for-all-users", ONE_COPY, 'L"Local\\\\"', 'L"Global\\\\"', "a second user cannot start it"),
    mutant("copy-with-higher-rights-unseen", ONE_COPY, " || (!mutex_ && reason == ERROR_ACCESS_DENIED)", "", "two icons"),
    mutant("locale-read-once", LOCALE, "  LocaleNames locale;\n",
           "  static LocaleNames locale;\n  static bool read = false;\n  if (read) {\n    return locale;\n  }\n  read = true;\n",
           "a changed locale is not seen"),
    mutant("code-page-of-the-console", CODE_PAGE, "MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, &narrow, 1, &wide, 1) == 1 &&\n"
           "                              WideCharToMultiByte(CP_ACP",
           "MultiByteToWideChar(CP_OEMCP, MB_ERR_INVALID_CHARS, &narrow, 1, &wide, 1) == 1 &&\n"
           "                              WideCharToMultiByte(CP_OEMCP", "other letters"),
    mutant("settings-in-the-current-folder", SETTINGS_FILE, 'runtime::ProgramFolder() + L"\\\\vesk.dat"', 'L"vesk.dat"',
           "wherever the starter was"),
]
