"""Mistakes that no operator makes: in the order of steps, in departures from the published formulae, in which error
comes first, in the calls to Windows. Each text occurs exactly once in its file."""

from operators import REPOSITORY, Mutant

BY_HAND = {
    "astro/angles.cpp": [
        ("turn-by-subtraction", "return (q - m) * 360 + f;", "return angle - Checked(m) * 360;"),
        ("degrees-multiplied-first", "(angle / 360 + angle / 360) * 3.1415926535", "angle * 3.1415926535 / 180"),
    ],
    "astro/calendar.cpp": [
        ("day-fraction-wraps", "CheckedCast<std::int16_t>(hourMinutes + minute)",
         "static_cast<std::int16_t>(hourMinutes + minute)"),
        ("hour-from-arithmetic", 'CalHour = runtime::LeadingInteger(runtime::FormatNumber(hours, L"00.0000"));',
         "CalHour = CheckedCast<std::int16_t>(Int(hours));"),
        ("part-of-a-day-too-early", "  CalWholeDays = CheckedCast<",
         "  CalDayPart = sinceMidnight - Int(sinceMidnight);\n  CalWholeDays = CheckedCast<"),
    ],
    "runtime/checked.h": [
        ("half-goes-up", "std::nearbyint(value)", "std::round(value)"),
    ],
    "report/local_time_offset.cpp": [
        ("offset-wraps", "CheckedCast<std::int32_t>(std::int64_t{seasonBias} + zone.Bias)",
         "static_cast<std::int32_t>(std::int64_t{seasonBias} + zone.Bias)"),
    ],
    "runtime/number_format.cpp": [
        ("product-for-the-number", "std::fma(magnitude, scale, -product)", "0.0"),
    ],
    "astro/sun.cpp": [
        ("sun-ascension-once-converted", "DegToRad(SinDeg(SunTrueLongitude) * CosDeg(Obliquity))",
         "SinDeg(SunTrueLongitude) * CosDeg(Obliquity)"),
        ("sun-quadrant-in-degrees", "runtime::Cos(SunTrueLongitude) < 0", "CosDeg(SunTrueLongitude) < 0"),
    ],
    "astro/moon.cpp": [
        ("venus-in-degrees", "Sin(DegToRad(346.56 + 132.87 * T) - 0.0091731 * Pow(T, 2))",
         "SinDeg(346.56 + 132.87 * T - 0.0091731 * Pow(T, 2))"),
        ("elongation-reduced",
         "  MoonNodeLongitude = NormalizeAngle(MoonNodeLongitude);\n",
         "  MoonNodeLongitude = NormalizeAngle(MoonNodeLongitude);\n"
         "  MoonElongation = NormalizeAngle(MoonElongation);\n"),
        ("node-after-the-reduction", "  const Checked node = MoonNodeLongitude;\n  const Checked sinNode",
         "  const Checked node = NormalizeAngle(MoonNodeLongitude);\n  const Checked sinNode"),
        ("groups-as-one", "    sum = sum + group;\n    group = 0;\n  }\n  return sum;", "  }\n  return group;"),
        ("moon-ascension-not-reduced", "NormalizeAngle(Cos(MoonLongitude) < 0 ? arctangent + 180 : arctangent)",
         "Cos(MoonLongitude) < 0 ? arctangent + 180 : arctangent"),
        ("negative-multiples-not-conjugated", "std::conj(phasors_[4 + n])", "phasors_[4 + n]"),
        ("row-26-by-its-phasor", "term.unconverted ? double{Sin(term.D * Checked(MoonElongation))} : wave(phasor)",
         "wave(phasor)"),
        ("start-outside-the-first-group", "  Checked sum = 0;\n  double group = start;",
         "  Checked sum = start;\n  double group = 0;"),
    ],
    "astro/moon_series.h": [
        ("longitude-rows-swapped", "    {+0.000521,     4, -1,  0,  0,  1},\n    {+0.000486,    -1,  0,  2,  0,  0},\n",
         "    {+0.000486,    -1,  0,  2,  0,  0},\n    {+0.000521,     4, -1,  0,  0,  1},\n"),
        ("longitude-row-41-as-printed", "{-0.000811,     0,  3,  1,  0,  1}", "{-0.000811,     2,  1,  1,  0,  1}"),
        ("parallax-row-28-as-printed", "{+0.000026,     2,  0, -2,  0,  2}", "{+0.000026,     2, -2,  0,  0,  2}"),
    ],
    "astro/phases.cpp": [
        ("lit-fraction-unreduced", "CosDeg(NormalizeAngle(i))", "CosDeg(i)"),
        ("moved-new-moon-as-printed", "PhaseInstant(kNew + 1, +0.0000333)", "PhaseInstant(kNew + 1)"),
        ("lit-fraction-last", "  WaningFlag = Checked(NewMoonJD)",
         "  Illumination = LitFraction();\n  WaningFlag = Checked(NewMoonJD)"),
        ("new-moon-evaluated-last", "  NewMoonJD = PhaseInstant(kNew);\n  FullMoonJD = PhaseInstant(kNew + 0.5);\n  if",
         "  FullMoonJD = PhaseInstant(kNew + 0.5);\n  NewMoonJD = PhaseInstant(kNew);\n  if"),
    ],
    "astro/phase_series.h": [
        ("phase-row-10-as-printed", "{-0.0004,  0,          0, -1,  2}", "{-0.0004,  0,         -1,  0,  2}"),
    ],
    "report/moon_report.cpp": [
        ("lines-written-upper-first", "  write(upper + (fullFirst ? 0 : 1), full);\n  write(upper + (fullFirst ? 1 : 0), newMoon);\n",
         "  write(upper + (fullFirst ? 1 : 0), newMoon);\n  write(upper + (fullFirst ? 0 : 1), full);\n"),
        ("new-moon-converted-first", "{.Full = LocalDateOf(FullMoonJD), .New = LocalDateOf(NewMoonJD)}",
         "[] { const auto New = LocalDateOf(NewMoonJD); return PhaseDates{LocalDateOf(FullMoonJD), New}; }()"),
        ("picture-of-every-pass", "  ComputeFor(base);\n",
         "  ComputeFor(base);\n  DrawMoonPhase(surroundings.Form(), Illumination, WaningFlag);\n"),
        ("phases-from-now", "DayFraction(at.day, 0, 0)", "DayFraction(at.day, at.hour, at.minute)"),
        ("offset-on-the-way-in", "DayFraction(at.day, at.hour, at.minute)",
         "DayFraction(at.day, at.hour, at.minute) - OffsetMinutes / 1440"),
        ("locale-kept", "  const runtime::LocaleNames locale = ", "  static const runtime::LocaleNames locale = "),
        ("age-from-the-earlier-reading", "surroundings.Now() - LastNew", "now - LastNew"),
        ("corrected-lines-say-next", 'L"New Full Moon : "', 'L"Next Full Moon : "'),
    ],
    "report/settings.cpp": [
        ("fields-swapped", "  visit(record.Reserved9);\n  visit(record.Reserved10);\n",
         "  visit(record.Reserved10);\n  visit(record.Reserved9);\n"),
    ],
    "tray/phase_drawing.cpp": [
        ("rim-is-filled",
         "  drawing.SetFillStyle(forms::FillStyle::Transparent);\n"
         "  drawing.Circle(kDiscCentre, kDiscRadius, kBlack);\n",
         "  drawing.Circle(kDiscCentre, kDiscRadius, kBlack);\n"),
    ],
    "tray/shell_record.cpp": [
        ("tip-padded-with-zeros", "szTip.fill(L' ')", "szTip.fill(L'\\0')"),
    ],
    "tray/shell_notifier.cpp": [
        ("wish-read-before-the-call", "NotifyShell(command) || (wanted_ && NotifyShell(TrayCommand::Add))",
         "(wanted_ && (NotifyShell(command) || NotifyShell(TrayCommand::Add)))"),
        ("icon-restored-by-adding", "    Apply(TrayCommand::Modify);\n", "    Apply(TrayCommand::Add);\n"),
    ],
    "report/frmMoon.cpp": [
        ("stored-option-decides", "if (controls_->Check1.at(0).State() == 1) {",
         "if (StateFromOption(Settings.RestoreInTray) == 1) {"),
        ("south-for-any-option", "return StateFromOption(Settings.SouthernView) == 1;",
         "return Settings.SouthernView != runtime::False;"),
        ("click-stores-the-other-option", "      Settings.RestoreInTray = option;",
         "      Settings.AutoStart = option;"),
        ("session-end-hides", "        EndProgram();", "        Unload();"),
        ("end-after-the-icon", "void frmMoon::EndProgram() {\n",
         "void frmMoon::EndProgram() {\n  std::int16_t gone = 0;\n  about_.UpdateMoonIcon(2, gone);\n"),
    ],
    "forms/drawing_list_win.cpp": [
        ("brush-never-deleted", "SelectObject(dc_, GetStockObject(fill ? DC_BRUSH : NULL_BRUSH)) != nullptr",
         "SelectObject(dc_, fill ? CreateSolidBrush(*fill) : GetStockObject(NULL_BRUSH)) != nullptr"),
        ("refused-fill-is-drawn", "painter.Paint(OnScreen(primitive, scale)) && whole",
         "(painter.Paint(OnScreen(primitive, scale)), true)"),
    ],
    "runtime/end_on_error_win.cpp": [
        ("box-in-the-handler", "    End();\n  }\n", "    End();\n    ReportRuntimeError();\n  }\n"),
        ("box-not-topmost", " | MB_TOPMOST", ""),
    ],
    "forms/place_win.cpp": [
        ("lost-window-is-seen", "MONITOR_DEFAULTTONULL", "MONITOR_DEFAULTTONEAREST"),
        ("bars-ignored", "monitor.rcWork", "monitor.rcMonitor"),
    ],
    "forms/controls_win.cpp": [
        ("font-of-ansi-characters", "DEFAULT_CHARSET", "ANSI_CHARSET"),
        ("resolution-of-the-other-axis", "GetDeviceCaps(screen.dc(), LOGPIXELSY)",
         "GetDeviceCaps(screen.dc(), LOGPIXELSX)"),
    ],
    "forms/window_win.h": [
        ("background-by-handle", "reinterpret_cast<HBRUSH>(INT_PTR{COLOR_3DFACE + 1})",
         "GetSysColorBrush(COLOR_3DFACE)"),
    ],
    "forms/window_win.cpp": [
        ("dialog-keys-to-the-control", "GetAncestor(message.hwnd, GA_ROOT)", "message.hwnd"),
    ],
    "forms/high_contrast_win.cpp": [
        ("blue-as-bright-as-red", "299 * GetRValue(colour) + 587 * GetGValue(colour) + 114 * GetBValue(colour)",
         "299 * GetBValue(colour) + 587 * GetGValue(colour) + 114 * GetRValue(colour)"),
    ],
    "start/main_win.cpp": [
        ("minimised-start-is-shown", "  if (AsksForNoWindow(showCommand)) {", "  if (false) {"),
    ],
    "tray/frmAbout.cpp": [
        ("right-button-chooses", "TPM_RETURNCMD | TPM_NONOTIFY", "TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON"),
        ("one-picture", "IDI_PHASE0 + index", "IDI_PHASE0"),
    ],
    "start/previous_instance_win.h": [
        ("one-copy-for-all-users", 'L"Local\\\\"', 'L"Global\\\\"'),
    ],
    "runtime/locale_names_win.cpp": [
        ("locale-read-once", "  return locale;\n", "  static const LocaleNames first = locale;\n  return first;\n"),
    ],
    "runtime/code_page_win.cpp": [
        ("code-page-of-the-console",
         "MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, &narrow, 1, &wide, 1) == 1 &&\n"
         "                              WideCharToMultiByte(CP_ACP",
         "MultiByteToWideChar(CP_OEMCP, MB_ERR_INVALID_CHARS, &narrow, 1, &wide, 1) == 1 &&\n"
         "                              WideCharToMultiByte(CP_OEMCP"),
    ],
    "report/settings_file_win.cpp": [
        ("settings-in-the-current-folder", 'runtime::ProgramFolder() + L"\\\\vesk.dat"', 'L"vesk.dat"'),
    ],
}

# Generated mutants that change nothing visible: a pattern for the beginning of their names, and why.
EQUIVALENT = {
    r"(?:astro/mMoon|tray/icon_number|tray/frmAbout)\.h: inline \S+ \w+ = 0; -> .* = 1;": "written before it is read",
    r"tray/shell_record\.h: \S+ \w+ = 0; -> .* = 1;": "About fills the record before the shell sees it",
    r"forms/twips\.h: enum class ScaleMode": "only their difference matters",
    r"tray/frmAbout_layout\.h: enum Id ": "the numbers only tell the controls apart",
    r"tray/shell_notifier\.h: bool stands_ = false;": "the first Apply sets it",
    r"tray/phase_drawing\.cpp: drawing\.SetDrawStyle": "all lines are solid",
    r"report/moon_report\.cpp: .* = (?:full\.date|NextFull) < .* <= ": "no Full Moon comes together with a New Moon",
    r"astro/calendar\.cpp: .* dayWithFraction .*\(30\.600[02] ": "gives the same whole days in every month",
    r"astro/moon\.cpp: .*<double, 3> powersOfE": "no row reads a fourth power",
    r"runtime/date_value\.cpp: .*secondOfDay .* - kSecondsPerDay\) %": "a day more, minus seconds, is the same date",
    r"runtime/code_page\.h: .*, 256> .* 257>": "a byte has only 256 values",
    r"runtime/code_page_win\.cpp: .*&back, 1, .*&back, 2, ": "a character of such a page is one byte",
    r"runtime/random_file_win\.cpp: DWORD \w+ = 0; -> .* = 1;": "the system sets it",
}


def by_hand():
    """The mutants of the table. Raises ValueError unless each text occurs exactly once in its file."""
    for file, mistakes in BY_HAND.items():
        text = (REPOSITORY / file).read_text(encoding="utf-8")
        for name, find, replacement in mistakes:
            if text.count(find) != 1:
                raise ValueError(f"{name}: its text occurs {text.count(find)} times in {file}")
            yield Mutant(name, file, text.index(find), text.index(find) + len(find), replacement)
