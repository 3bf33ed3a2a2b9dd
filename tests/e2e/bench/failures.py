"""What each imported function returns when it fails, according to its documentation."""

import dataclasses
import functools
import re

NO_MEMORY, ACCESS_DENIED, CRC, DISK_FULL, NO_RESOURCES = 8, 5, 23, 112, 1450  # errors of Windows
MINUS_ONE = 0xFFFFFFFF


@dataclasses.dataclass(frozen=True)
class Failure:
    """A failed call: what the function returns, the last error, and the run-time errors that the program may end on. By
    default it may end on 7: Out of memory."""

    result: int = 0
    error: int = NO_MEMORY
    ends_on: tuple = (7,)


# The program never ends if one of these fails: queries, painting, the shell.
NOT_NEEDED = """
    fwrite
    CloseHandle GetLocaleInfoW MultiByteToWideChar WideCharToMultiByte InitCommonControlsEx Shell_NotifyIconA
    DeleteObject Ellipse GetObjectW GetStockObject GetTextExtentPoint32W IntersectClipRect Pie SelectClipRgn SelectObject
    BeginPaint ChangeWindowMessageFilterEx DrawEdge EndMenu EndPaint EnumThreadWindows FillRect GetCapture GetClientRect
    GetCursorPos GetFocus GetForegroundWindow GetMonitorInfoW GetNextDlgTabItem FindWindowW GetSysColor GetWindowRect
    GetWindowThreadProcessId InvalidateRect IsChild IsIconic IsZoomed KillTimer MonitorFromWindow PostMessageW
    PostThreadMessageW RedrawWindow ReleaseDC SetFocus SetForegroundWindow SetWindowPos SystemParametersInfoW TrackPopupMenu
    ValidateRect
    """

SPECIAL = {name: Failure(ends_on=()) for name in NOT_NEEDED.split()} | {
    "__wgetmainargs": Failure(MINUS_ONE), "signal": Failure(MINUS_ONE), "fprintf": Failure(MINUS_ONE, ends_on=()),
    "vfprintf": Failure(MINUS_ONE, ends_on=()), "TlsAlloc": Failure(MINUS_ONE), "WaitForSingleObject": Failure(MINUS_ONE),
    "CreateFileW": Failure(MINUS_ONE, ACCESS_DENIED, (75,)), "GetFileSizeEx": Failure(0, CRC, (57,)),
    "ReadFile": Failure(0, CRC, (57,)), "WriteFile": Failure(0, DISK_FULL, (61,)), "GetModuleFileNameW": Failure(ends_on=(76,)),
    "GetMessageW": Failure(MINUS_ONE, ends_on=(51,)), "GetTimeZoneInformation": Failure(MINUS_ONE, ends_on=()),
    "SetDCBrushColor": Failure(MINUS_ONE, ends_on=()), "SetDCPenColor": Failure(MINUS_ONE, ends_on=()),
}

# Other ways to fail.
VARIANTS = {
    "CreateFileW lacks resources": {"CreateFileW": Failure(MINUS_ONE, NO_RESOURCES)},
    "ReadFile reads nothing": {"ReadFile": Failure(1, 0, (57,))},
}

# These cannot fail, or the program could do nothing about it. The last group never fails for valid windows and handles:
# DispatchMessageW and SendMessageW merely call the window; without DefWindowProcW an unpainted window would get WM_PAINT
# for ever.
NEVER_FAIL = set("""
    DeleteCriticalSection EnterCriticalSection ExitProcess GetCurrentProcessId GetCurrentThreadId GetLastError GetLocalTime
    GetMessagePos GetStartupInfoW InitializeCriticalSection LeaveCriticalSection SetLastError SetUnhandledExceptionFilter Sleep TlsFree
    TlsGetValue
    __p__commode __p__fmode __p__wcmdln __set_app_type __setusermatherr __winitenv _amsg_exit _cexit _errno _initterm _iob
    atan exit free memcpy memmove memset strcmp strlen strncmp tan wcslen

    DefWindowProcW DispatchMessageW GetParent GetWindowLongW InvalidateRect IsWindowVisible SendMessageW SetWindowLongW
    ShowWindow wsprintfA
    """.split())

# These fail together if a resource runs out or the shell is missing.
SETS = {
    "memory": ["malloc", "calloc", "realloc"],
    "GDI objects": ["CreateFontIndirectW", "GetDC", "BeginPaint"],
    "USER objects": ["CreateWindowExW", "CreatePopupMenu", "AppendMenuW", "LoadImageW", "LoadCursorW", "RegisterClassExW",
                     "RegisterWindowMessageW", "SetTimer"],
    "shell": ["Shell_NotifyIconA"],
}
SETS["all memory"] = [*SETS["memory"], *SETS["GDI objects"], *SETS["USER objects"], "SetWindowTextW", "PostMessageW",
                      "PostThreadMessageW", "InvalidateRect", "CreateMutexW", "TlsAlloc"]


def usual(functions):
    """How each of the functions usually fails."""
    return {name: SPECIAL.get(name, Failure()) for name in functions}


@functools.cache
def argument_bytes(symbols):
    """How many bytes of arguments each stdcall function pops off the stack, by name; functions not listed pop none. The
    symbols are those of Windows' import libraries."""
    return {name: int(size) for name, size in re.findall(r" T _(\w+)@(\d+)$", symbols.read_text(), re.MULTILINE)}
