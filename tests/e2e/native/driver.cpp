// Runs beside Tidewell for the bench: reads its windows and acts on them.
//
// Reads one request a line and answers each with one line of JSON: {"error": ...} if it is unknown or fails. With an
// argument it answers that one request and ends. Numbers are decimal. kRequests and bench/driver.py say what the
// requests do.

#include <windows.h>
// Needs windows.h first.
#include <shellapi.h>

#include <cstdint>
#include <cstdio>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/other_windows_win.h"

namespace {

using namespace support;  // NOLINT(google-build-using-namespace): used throughout

// ---- JSON

std::string Json(const std::wstring& text) {
  std::string json = "\"";
  for (const wchar_t c : text) {
    char escaped[7];
    std::snprintf(escaped, sizeof escaped, "\\u%04x", unsigned{c});
    json += escaped;
  }
  return json + "\"";
}

std::string Json(HWND window) { return std::to_string(reinterpret_cast<std::uintptr_t>(window)); }

template <class Number>
requires std::is_arithmetic_v<Number> std::string Json(Number number) { return std::to_string(number); }

template <class Item>
std::string Json(const std::vector<Item>& items) {
  std::string json;
  for (const Item& item : items) {
    json += (json.empty() ? "" : ", ") + Json(item);
  }
  return "[" + json + "]";
}

std::string Json(const RECT& place) {
  return Json(std::vector{place.left, place.top, place.right - place.left, place.bottom - place.top});
}

[[noreturn]] void Refuse(const std::string& why) {
  throw std::runtime_error(why + ", error " + std::to_string(GetLastError()));
}

std::string Json(const std::optional<LRESULT>& answer) {
  if (!answer) {
    Refuse("no answer from the window");
  }
  return Json(*answer);
}

using Members = std::vector<std::pair<const char*, std::string>>;

std::string Object(const Members& members) {
  std::string json;
  for (const auto& [name, value] : members) {
    json += (json.empty() ? "\"" : ", \"") + std::string(name) + "\": " + value;
  }
  return "{" + json + "}";
}

// ---- requests

/// The arguments of a request.
class Words {
 public:
  explicit Words(const std::string& line) : words_(line) {}

  /// The next argument; a text is the rest of the line. A missing number is 0.
  template <class Argument>
  Argument Next() {
    if constexpr (std::is_same_v<Argument, std::wstring>) {
      std::string rest;
      std::getline(words_ >> std::ws, rest);
      return Wide(rest);
    } else {
      long long number = 0;
      words_ >> number;
      if constexpr (std::is_pointer_v<Argument>) {
        return reinterpret_cast<Argument>(static_cast<std::uintptr_t>(number));
      } else {
        return static_cast<Argument>(number);
      }
    }
  }

 private:
  std::istringstream words_;
};

/// Calls a function with the arguments that it takes.
template <class Result, class... Arguments>
std::string Call(Result (*function)(Arguments...), Words& words) {
  const std::tuple<std::remove_cvref_t<Arguments>...> arguments{words.Next<std::remove_cvref_t<Arguments>>()...};
  return Json(std::apply(function, arguments));
}

template <class Result, class... Arguments>
std::string Call(Result(WINAPI* function)(Arguments...), Words& words) {
  const std::tuple<Arguments...> arguments{words.Next<Arguments>()...};
  return Json(std::apply(function, arguments));
}

/// The request that calls a function.
template <auto function>
std::string Calls(Words& words) {
  return Call(function, words);
}

std::string Describe(HWND window) {
  RECT screen{};
  RECT client{};
  // Read before the places: otherwise a window moved and shown in between would be reported as shown at its old place.
  const LONG style = GetWindowLongW(window, GWL_STYLE);
  const BOOL shown = IsWindowVisible(window);
  GetWindowRect(window, &screen);
  GetClientRect(window, &client);
  const HWND parent = GetAncestor(window, GA_PARENT);
  POINT origin{};
  ClientToScreen(window, &origin);
  const bool button = ClassOf(window) == L"Button";
  return Object({{"hwnd", Json(window)},
                 {"parent", Json(parent == GetDesktopWindow() ? nullptr : parent)},
                 {"class_", Json(ClassOf(window))},
                 {"text", Json(TextOf(window))},
                 {"screen", Json(screen)},
                 {"place", Json(PlaceOf(window))},
                 {"client", Json(client)},
                 {"client_origin", Json(std::vector{origin.x, origin.y})},
                 {"visible", Json((style & WS_VISIBLE) != 0)},
                 {"shown", Json(shown)},
                 {"enabled", Json(IsWindowEnabled(window))},
                 {"minimised", Json(IsIconic(window))},
                 {"checked", button ? Json(Ask(window, BM_GETCHECK).value_or(0)) : "null"},
                 {"exstyle", Json(GetWindowLongW(window, GWL_EXSTYLE))}});
}

std::string Windows(Words& words) {
  std::string described;
  for (const HWND window : WindowsOf(words.Next<DWORD>())) {
    described += (described.empty() ? "" : ", ") + Describe(window);
  }
  return "[" + described + "]";
}

std::string Broadcast(Words& words) {
  const UINT message = RegisterWindowMessageW(words.Next<std::wstring>().c_str());
  return Json(PostMessageW(HWND_BROADCAST, message, 0, 0));
}

std::string RemoveIcon(Words& words) {
  NOTIFYICONDATAW icon{};
  icon.cbSize = sizeof icon;
  icon.hWnd = words.Next<HWND>();
  icon.uID = 1;
  return Json(Shell_NotifyIconW(NIM_DELETE, &icon));
}

std::string Input(Words& words) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  if (GetGUIThreadInfo(GetWindowThreadProcessId(words.Next<HWND>(), nullptr), &info) == FALSE) {
    Refuse("no such thread");
  }
  return Object({{"focus", Json(info.hwndFocus)},
                 {"foreground", Json(GetForegroundWindow())},
                 {"in_menu", Json((info.flags & GUI_INMENUMODE) != 0)}});
}

HANDLE held = INVALID_HANDLE_VALUE;

std::string Release(Words&) {
  CloseHandle(std::exchange(held, INVALID_HANDLE_VALUE));
  return "true";
}

std::string Hold(Words& words) {
  Release(words);
  const auto share = words.Next<DWORD>();
  held = CreateFileW(words.Next<std::wstring>().c_str(), GENERIC_READ | GENERIC_WRITE, share, nullptr, OPEN_ALWAYS,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
  if (held == INVALID_HANDLE_VALUE) {
    Refuse("cannot hold it");
  }
  return "true";
}

/// Presses keys together.
std::string Keys(Words& words) {
  std::vector<WORD> together;
  while (const auto key = words.Next<WORD>()) {
    together.push_back(key);
  }
  Press(together);
  return "true";
}

/// Starts a program as a shortcut does, with a show command, and waits for its end.
std::string Start(Words& words) {
  STARTUPINFOW how{};
  how.cb = sizeof how;
  how.dwFlags = STARTF_USESHOWWINDOW;
  how.wShowWindow = words.Next<WORD>();
  PROCESS_INFORMATION started{};
  if (CreateProcessW(words.Next<std::wstring>().c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how,
                     &started) == FALSE) {
    Refuse("it does not start");
  }
  return Json(WaitForSingleObject(started.hProcess, INFINITE));
}

std::string End(Words& words) {
  const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, words.Next<DWORD>());
  const BOOL ended = TerminateProcess(process, 1);
  CloseHandle(process);
  return Json(ended);
}

// ---- answering

const std::map<std::string, std::string (*)(Words&)> kRequests = {
    {"processes", Calls<ProcessesOf>},      // IMAGE: the ids of its processes
    {"windows", Windows},                   // PROCESS: its windows; see Program.windows()
    {"send", Calls<Ask>},                   // SendMessage; gives up after 20 s
    {"post", Calls<PostMessageW>},          // for what may block, such as opening a menu
    {"signal", Calls<SendNotifyMessageW>},  // does not wait, overtakes posted messages, and reaches an open menu
    {"broadcast", Broadcast},               // NAME: posts a registered message to all top-level windows
    {"remove_icon", RemoveIcon},            // WINDOW: removes its icon 1 from the tray
    {"input", Input},
    {"tips", Calls<ShownTips>},  // the texts of the tooltips on the screen
    {"redraw", Calls<RedrawWindow>},
    {"place", Calls<SetWindowPos>},
    {"hold", Hold},
    {"release", Release},
    {"keys", Keys},
    {"start", Start},
    {"end", End},  // PROCESS: kills it
};

std::string Answer(const std::string& line) {
  const std::string name = line.substr(0, line.find(' '));
  Words words(line.substr(name.size()));
  try {
    return kRequests.at(name)(words);
  } catch (const std::exception& error) {
    return Object({{"error", Json(Wide(error.what()))}});
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count > 1) {
    std::cout << Answer(arguments[1]) << std::endl;
    return 0;
  }
  for (std::string line; std::getline(std::cin, line);) {
    std::cout << Answer(line) << std::endl;
  }
  return 0;
}
