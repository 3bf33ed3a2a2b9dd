// The bench's hands and eyes inside Windows: acts on Tidewell's windows from outside.
//
// Reads one request a line and answers each with one line of JSON: {"error": ...} if it is unknown or fails. With
// arguments it answers that one request and ends. Numbers are decimal.
//
//   processes NAME            ids of the processes of the image NAME
//   windows PID               every window of a process, parents before children
//   send HWND MSG W L         SendMessage; gives up after 20 s
//   post HWND MSG W L         PostMessage
//   signal HWND MSG W L       SendNotifyMessage, as the shell sends an icon's messages
//   broadcast NAME            posts the registered message NAME to all top-level windows
//   notify COMMAND HWND       Shell_NotifyIcon for icon 1 of a window
//   input HWND                the focus of the window's thread, whether it is in a menu, and the foreground window
//   accessible HWND           MSAA name
//   tips                      texts of the shown tooltips of every process
//   handles PID               the numbers of kernel handles, GDI objects and windows of a process
//   redraw HWND               RedrawWindow, at once, with the window's children
//   front HWND                SetForegroundWindow
//   place HWND X Y W H        moves and sizes a window, without activating it
//   hold SHARE PATH           opens a file with a share mode, 0 for exclusively; releases the one held before
//   release                   releases it
//   locale                    the user's month names, day markers and decimal separator
//   keys KEY KEY...           presses keys one after the other; KEY is a virtual-key code, or several to hold
//                             together, joined by +
//   end PID                   kills a process
//   menu X Y TEXT|TEXT|...    shows a menu at X, Y until the next request, to compare pictures with

#include <windows.h>
// After windows.h, which they build on.
#include <shellapi.h>
#include <winternl.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "support/other_windows_win.h"

namespace {

using namespace support;  // NOLINT(google-build-using-namespace): used throughout

// ---- JSON

std::string Quoted(const std::wstring& text) {
  std::string json = "\"";
  for (const char c : Utf8(text)) {
    if (c == '"' || c == '\\') {
      json += '\\';
      json += c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      constexpr char kDigits[] = "0123456789abcdef";
      json += std::string("\\u00") + kDigits[c >> 4] + kDigits[c & 15];
    } else {
      json += c;
    }
  }
  return json + "\"";
}

std::string Quoted(const std::string& text) { return Quoted(Wide(text)); }

std::string Number(HWND window) { return std::to_string(reinterpret_cast<std::uintptr_t>(window)); }

std::string Truth(bool value) { return value ? "true" : "false"; }

std::string Array(const std::vector<std::string>& items) {
  std::string json;
  for (const std::string& item : items) {
    json += (json.empty() ? "" : ", ") + item;
  }
  return "[" + json + "]";
}

using Members = std::vector<std::pair<const char*, std::string>>;

std::string Object(const Members& members) {
  std::string json;
  for (const auto& [name, value] : members) {
    json += (json.empty() ? "\"" : ", \"") + std::string(name) + "\": " + value;
  }
  return "{" + json + "}";
}

std::string Error(const std::string& text) { return Object({{"error", Quoted(text)}}); }

std::string Place(const RECT& place) {
  return Array({std::to_string(place.left), std::to_string(place.top), std::to_string(place.right - place.left),
                std::to_string(place.bottom - place.top)});
}

// ---- requests

using Arguments = std::vector<std::string>;

long long AsNumber(const std::string& text) { return std::stoll(text); }

HWND AsWindow(const std::string& text) { return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(AsNumber(text))); }

std::string Processes(const Arguments& arguments) {
  std::vector<std::string> ids;
  for (const DWORD id : ProcessesOf(Wide(arguments.at(0)))) {
    ids.push_back(std::to_string(id));
  }
  return Array(ids);
}

std::string Describe(HWND window) {
  RECT screen{};
  RECT client{};
  // Read before the places: a window on its way must not be reported as shown at its old place.
  const LONG style = GetWindowLongW(window, GWL_STYLE);
  const BOOL shown = IsWindowVisible(window);
  GetWindowRect(window, &screen);
  GetClientRect(window, &client);
  const HWND parent = GetAncestor(window, GA_PARENT);
  POINT origin{};
  ClientToScreen(window, &origin);
  const bool button = ClassOf(window) == L"Button";
  return Object({{"hwnd", Number(window)},
                 {"parent", Number(parent == GetDesktopWindow() ? nullptr : parent)},
                 {"class", Quoted(ClassOf(window))},
                 {"text", Quoted(TextOf(window))},
                 {"screen", Place(screen)},
                 {"place", Place(PlaceOf(window))},
                 {"client", Place(client)},
                 {"client_origin", Array({std::to_string(origin.x), std::to_string(origin.y)})},
                 {"visible", Truth((style & WS_VISIBLE) != 0)},
                 {"shown", Truth(shown)},
                 {"enabled", Truth(IsWindowEnabled(window))},
                 {"minimised", Truth(IsIconic(window))},
                 {"checked", button ? std::to_string(Ask(window, BM_GETCHECK).value_or(0)) : "null"},
                 {"exstyle", std::to_string(static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE)))}});
}

std::string Windows(const Arguments& arguments) {
  std::vector<std::string> described;
  for (const HWND window : WindowsOf(static_cast<DWORD>(AsNumber(arguments.at(0))))) {
    described.push_back(Describe(window));
  }
  return Array(described);
}

std::string Send(const Arguments& arguments) {
  const auto result =
      Ask(AsWindow(arguments.at(0)), static_cast<UINT>(AsNumber(arguments.at(1))),
          static_cast<WPARAM>(AsNumber(arguments.at(2))), static_cast<LPARAM>(AsNumber(arguments.at(3))));
  if (!result) {
    return Error("no answer from the window, error " + std::to_string(GetLastError()));
  }
  return std::to_string(*result);
}

template <auto Function>
std::string HandOver(const Arguments& arguments) {
  return Truth(Function(AsWindow(arguments.at(0)), static_cast<UINT>(AsNumber(arguments.at(1))),
                        static_cast<WPARAM>(AsNumber(arguments.at(2))),
                        static_cast<LPARAM>(AsNumber(arguments.at(3)))) != FALSE);
}

std::string Broadcast(const Arguments& arguments) {
  const UINT message = RegisterWindowMessageW(Wide(arguments.at(0)).c_str());
  return Truth(PostMessageW(HWND_BROADCAST, message, 0, 0) != FALSE);
}

std::string Notify(const Arguments& arguments) {
  NOTIFYICONDATAW icon{};
  icon.cbSize = sizeof icon;
  icon.hWnd = AsWindow(arguments.at(1));
  icon.uID = 1;
  return Truth(Shell_NotifyIconW(static_cast<DWORD>(AsNumber(arguments.at(0))), &icon) != FALSE);
}

std::string Input(const Arguments& arguments) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  if (GetGUIThreadInfo(GetWindowThreadProcessId(AsWindow(arguments.at(0)), nullptr), &info) == FALSE) {
    return Error("no such thread");
  }
  return Object({{"focus", Number(info.hwndFocus)},
                 {"foreground", Number(GetForegroundWindow())},
                 {"in_menu", Truth((info.flags & GUI_INMENUMODE) != 0)}});
}

std::string Accessible(const Arguments& arguments) {
  const auto name = AccessibleName(AsWindow(arguments.at(0)));
  return name ? Quoted(*name) : "null";
}

std::string Tips(const Arguments&) {
  std::vector<std::string> tips;
  for (const std::wstring& tip : ShownTips()) {
    tips.push_back(Quoted(tip));
  }
  return Array(tips);
}

// For another process Wine's GetProcessHandleCount and GetGuiResources return 0. So try the handles one by one, and
// count the GDI objects in the table that Wine keeps in every 32-bit process.

int KernelHandles(HANDLE process) {
  constexpr std::uintptr_t kBeyondTheLast = 0x10000;
  int count = 0;
  for (std::uintptr_t handle = 4; handle < kBeyondTheLast; handle += 4) {
    HANDLE copy = nullptr;
    if (DuplicateHandle(process, reinterpret_cast<HANDLE>(handle), GetCurrentProcess(), &copy, 0, FALSE,
                        DUPLICATE_SAME_ACCESS)) {
      ++count;
      CloseHandle(copy);
    }
  }
  return count;
}

struct GdiEntry {
  std::uint64_t object;
  std::uint32_t owner;
  std::uint16_t unique;
  std::uint8_t type;  // 0 if the entry is free
  std::uint8_t flags;
  std::uint64_t user;
};

int GdiObjects(HANDLE process) {
  constexpr std::size_t kEntries = 0x4000;
  constexpr std::uintptr_t kTableInProcessBlock = 0x94;
  const auto query = reinterpret_cast<decltype(&NtQueryInformationProcess)>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQueryInformationProcess")));
  PROCESS_BASIC_INFORMATION basic{};
  query(process, ProcessBasicInformation, &basic, sizeof basic, nullptr);
  const auto block = reinterpret_cast<std::uintptr_t>(basic.PebBaseAddress);
  void* table = nullptr;
  std::vector<GdiEntry> entries(kEntries);
  if (!ReadProcessMemory(process, reinterpret_cast<void*>(block + kTableInProcessBlock), &table, sizeof table,
                         nullptr) ||
      !ReadProcessMemory(process, table, entries.data(), entries.size() * sizeof(GdiEntry), nullptr)) {
    return -1;
  }
  return static_cast<int>(std::ranges::count_if(entries, [](const GdiEntry& entry) { return entry.type != 0; }));
}

std::string Handles(const Arguments& arguments) {
  const auto id = static_cast<DWORD>(AsNumber(arguments.at(0)));
  const HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ | PROCESS_DUP_HANDLE, FALSE, id);
  if (process == nullptr) {
    return Error("no such process");
  }
  const int kernel = KernelHandles(process);
  const int gdi = GdiObjects(process);
  CloseHandle(process);
  if (gdi <= 0) {
    return Error("no table of GDI objects in its place");
  }
  return Object({{"kernel", std::to_string(kernel)},
                 {"gdi", std::to_string(gdi)},
                 {"windows", std::to_string(WindowsOf(id).size())}});
}

std::string Redraw(const Arguments& arguments) {
  return Truth(RedrawWindow(AsWindow(arguments.at(0)), nullptr, nullptr,
                            RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW | RDW_FRAME) != FALSE);
}

std::string BringToFront(const Arguments& arguments) {
  return Truth(SetForegroundWindow(AsWindow(arguments.at(0))) != FALSE);
}

std::string PlaceWindow(const Arguments& arguments) {
  const auto length = [&](std::size_t at) { return static_cast<int>(AsNumber(arguments.at(at))); };
  return Truth(SetWindowPos(AsWindow(arguments.at(0)), nullptr, length(1), length(2), length(3), length(4),
                            SWP_NOZORDER | SWP_NOACTIVATE) != FALSE);
}

HANDLE held = INVALID_HANDLE_VALUE;

std::string Release(const Arguments&) {
  if (held != INVALID_HANDLE_VALUE) {
    CloseHandle(held);
    held = INVALID_HANDLE_VALUE;
  }
  return "true";
}

std::string Hold(const Arguments& arguments) {
  Release(arguments);
  held =
      CreateFileW(Wide(arguments.at(1)).c_str(), GENERIC_READ | GENERIC_WRITE,
                  static_cast<DWORD>(AsNumber(arguments.at(0))), nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  return held != INVALID_HANDLE_VALUE ? "true" : Error("cannot hold it, error " + std::to_string(GetLastError()));
}

std::string LocaleText(LCTYPE type) {
  wchar_t text[80] = L"";
  GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, 80);
  return Quoted(std::wstring(text));
}

std::string Locale(const Arguments&) {
  std::vector<std::string> months;
  for (LCTYPE month = 0; month < 12; ++month) {
    months.push_back(LocaleText(LOCALE_SABBREVMONTHNAME1 + month));
  }
  return Object({{"name", LocaleText(LOCALE_SNAME)},
                 {"months", Array(months)},
                 {"am", LocaleText(LOCALE_S1159)},
                 {"pm", LocaleText(LOCALE_S2359)},
                 {"decimal", LocaleText(LOCALE_SDECIMAL)}});
}

std::string Keys(const Arguments& arguments) {
  std::istringstream strokes(arguments.at(0));
  for (std::string stroke; strokes >> stroke;) {
    std::istringstream joined(stroke);
    std::vector<WORD> together;
    for (std::string key; std::getline(joined, key, '+');) {
      together.push_back(static_cast<WORD>(AsNumber(key)));
    }
    Press(together);
  }
  return "true";
}

std::string End(const Arguments& arguments) {
  const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, static_cast<DWORD>(AsNumber(arguments.at(0))));
  const BOOL ended = TerminateProcess(process, 1);
  CloseHandle(process);
  return Truth(ended != FALSE);
}

// The menu has its own thread, so the driver can still read requests.
struct OwnMenu {
  POINT at;
  std::vector<std::wstring> entries;
};

DWORD WINAPI ShowOwnMenu(void* parameter) {
  auto* const own = static_cast<OwnMenu*>(parameter);
  const HWND owner =
      CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
  const HMENU menu = CreatePopupMenu();
  UINT id = 1;
  for (const std::wstring& entry : own->entries) {
    AppendMenuW(menu, MF_STRING, id++, entry.c_str());
  }
  SetForegroundWindow(owner);
  TrackPopupMenu(menu, TPM_RETURNCMD | TPM_NONOTIFY, own->at.x, own->at.y, 0, owner, nullptr);
  DestroyMenu(menu);
  DestroyWindow(owner);
  delete own;
  return 0;
}

HANDLE menuThread = nullptr;
DWORD menuThreadId = 0;

std::string Menu(const Arguments& arguments) {
  auto* const own =
      new OwnMenu{.at = {static_cast<LONG>(AsNumber(arguments.at(0))), static_cast<LONG>(AsNumber(arguments.at(1)))},
                  .entries = {}};
  std::wistringstream entries(Wide(arguments.at(2)));
  for (std::wstring entry; std::getline(entries, entry, L'|');) {
    own->entries.push_back(entry);
  }
  menuThread = CreateThread(nullptr, 0, ShowOwnMenu, own, 0, &menuThreadId);
  return "true";
}

void CloseOwnMenu() {
  if (menuThread == nullptr) {
    return;
  }
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  while (WaitForSingleObject(menuThread, 20) == WAIT_TIMEOUT) {
    if (GetGUIThreadInfo(menuThreadId, &info) != FALSE && info.hwndMenuOwner != nullptr) {
      PostMessageW(info.hwndMenuOwner, WM_CANCELMODE, 0, 0);
    }
  }
  CloseHandle(menuThread);
  menuThread = nullptr;
}

// ---- answering

// Only the last argument may hold spaces; their number says where it begins.
struct Request {
  std::size_t arguments;
  std::string (*answer)(const Arguments&);
};

const std::map<std::string, Request> kRequests = {
    {"processes", {1, Processes}},
    {"windows", {1, Windows}},
    {"send", {4, Send}},
    {"post", {4, HandOver<PostMessageW>}},
    {"signal", {4, HandOver<SendNotifyMessageW>}},
    {"broadcast", {1, Broadcast}},
    {"notify", {2, Notify}},
    {"input", {1, Input}},
    {"accessible", {1, Accessible}},
    {"tips", {0, Tips}},
    {"handles", {1, Handles}},
    {"redraw", {1, Redraw}},
    {"front", {1, BringToFront}},
    {"place", {5, PlaceWindow}},
    {"hold", {2, Hold}},
    {"release", {0, Release}},
    {"locale", {0, Locale}},
    {"menu", {3, Menu}},
    {"keys", {1, Keys}},
    {"end", {1, End}},
};

std::string Answer(const std::string& line) {
  std::istringstream words(line);
  std::string name;
  words >> name;
  const auto request = kRequests.find(name);
  if (request == kRequests.end()) {
    return Error("unknown request: " + line);
  }
  Arguments arguments;
  for (std::size_t number = 1; number <= request->second.arguments; ++number) {
    std::string argument;
    words >> std::ws;
    number < request->second.arguments ? words >> argument : std::getline(words, argument);
    arguments.push_back(argument);
  }
  try {
    return request->second.answer(arguments);
  } catch (const std::exception& error) {
    return Error(line + ": " + error.what());
  }
}

void Write(const std::string& answer) {
  const std::string line = answer + "\n";
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

bool ReadRequest(std::string& line) {
  line.clear();
  char c = 0;
  DWORD read = 0;
  while (ReadFile(GetStdHandle(STD_INPUT_HANDLE), &c, 1, &read, nullptr) != FALSE && read == 1) {
    if (c == '\n') {
      return true;
    }
    line += c;
  }
  return false;
}

}  // namespace

int main(int count, char** arguments) {
  CoInitialize(nullptr);
  std::string line;
  if (count > 1) {
    for (int number = 1; number < count; ++number) {
      line += (line.empty() ? "" : " ") + std::string(arguments[number]);
    }
    Write(Answer(line));
    return 0;
  }
  while (ReadRequest(line)) {
    CloseOwnMenu();
    Write(Answer(line));
  }
  return 0;
}
