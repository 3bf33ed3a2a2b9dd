// Runs a program step by step: stops before each call that may change a file or the registry.
//
//   stepper COMMAND LINE
//
// Prints the call's name and reads a line: "go" continues the program, anything else kills it. At the program's end it
// prints "ended STATUS".

#include <windows.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <string>

namespace {

constexpr std::array kCalls = {"NtCreateFile",  "NtWriteFile",      "NtSetInformationFile", "NtCreateKey",
                               "NtSetValueKey", "NtDeleteValueKey", "NtDeleteKey"};
constexpr std::uint8_t kBreak = 0xCC, kLoadNumber = 0xB8;  // INT3; MOV EAX, which begins each of these calls

// ntdll.dll has the same address in every process.
std::uint8_t* Place(const char* call) {
  return reinterpret_cast<std::uint8_t*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), call));
}

bool SetBreaks(HANDLE process) {
  for (const char* call : kCalls) {
    std::uint8_t* const place = Place(call);
    if (!place || *place != kLoadNumber || !WriteProcessMemory(process, place, &kBreak, 1, nullptr)) {
      return false;
    }
  }
  return true;
}

// Does what the replaced instruction would have done.
void StepOver(HANDLE thread, const std::uint8_t* place) {
  CONTEXT context{};
  context.ContextFlags = CONTEXT_CONTROL | CONTEXT_INTEGER;
  GetThreadContext(thread, &context);
  std::memcpy(&context.Eax, place + 1, sizeof context.Eax);
  context.Eip = reinterpret_cast<std::uintptr_t>(place) + 1 + sizeof context.Eax;
  SetThreadContext(thread, &context);
}

const char* CallAt(const void* address) {
  for (const char* call : kCalls) {
    if (Place(call) == address) {
      return call;
    }
  }
  return nullptr;
}

}  // namespace

int wmain(int count, wchar_t* words[]) {
  std::wstring command;
  for (int word = 1; word < count; ++word) {
    command += (word > 1 ? L" " : L"") + std::wstring(words[word]);
  }
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION program{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, DEBUG_ONLY_THIS_PROCESS, nullptr, nullptr,
                      &startup, &program)) {
    return 1;
  }
  bool started = false;
  DEBUG_EVENT event{};
  while (WaitForDebugEvent(&event, INFINITE)) {
    DWORD answer = DBG_CONTINUE;
    if (event.dwDebugEventCode == EXIT_PROCESS_DEBUG_EVENT) {
      std::cout << "ended " << event.u.ExitProcess.dwExitCode << std::endl;
      return 0;
    }
    if (event.dwDebugEventCode == EXCEPTION_DEBUG_EVENT) {
      const EXCEPTION_RECORD& exception = event.u.Exception.ExceptionRecord;
      if (const char* const call = CallAt(exception.ExceptionAddress)) {
        std::cout << call << std::endl;
        std::string line;
        if (!std::getline(std::cin, line) || line != "go") {
          TerminateProcess(program.hProcess, 0);
          return 0;
        }
        const HANDLE thread = OpenThread(THREAD_ALL_ACCESS, FALSE, event.dwThreadId);
        StepOver(thread, Place(call));
        CloseHandle(thread);
      } else if (exception.ExceptionCode != EXCEPTION_BREAKPOINT) {
        answer = DBG_EXCEPTION_NOT_HANDLED;
      } else if (!started && !SetBreaks(program.hProcess)) {
        return 1;
      } else {
        started = true;
      }
    }
    ContinueDebugEvent(event.dwProcessId, event.dwThreadId, answer);
  }
  return 1;
}
