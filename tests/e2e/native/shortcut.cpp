// Starts a program as a shortcut does, with a show command, and ends with it and its status.
//
//   shortcut PROGRAM SHOW-COMMAND

#include <windows.h>

#include <cstdlib>

int main(int, char** arguments) {
  STARTUPINFOA how{};
  how.cb = sizeof how;
  how.dwFlags = STARTF_USESHOWWINDOW;
  how.wShowWindow = static_cast<WORD>(std::atoi(arguments[2]));
  PROCESS_INFORMATION started{};
  if (CreateProcessA(arguments[1], nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how, &started) == FALSE) {
    return -1;
  }
  WaitForSingleObject(started.hProcess, INFINITE);
  DWORD status = 0;
  GetExitCodeProcess(started.hProcess, &status);
  return static_cast<int>(status);
}
