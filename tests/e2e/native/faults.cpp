#include "faults.h"

#include <cstdint>
#include <fstream>

namespace {

#pragma pack(push, 1)
/// Machine code: `push import; jmp ToDecide`.
struct Thunk {
  std::uint8_t push = 0x68;
  const void* import = nullptr;
  std::uint8_t jump = 0xE9;
  std::int32_t distance = 0;
};

/// Machine code: `mov eax, result; ret bytes`.
struct Failure {
  std::uint8_t move = 0xB8;
  unsigned result = 0;
  std::uint8_t ret = 0xC2;
  std::uint16_t bytes = 0;
};
#pragma pack(pop)

/// An imported function. The program calls its thunk.
struct Import {
  const char* name = nullptr;
  Thunk thunk;
  void* target = nullptr;  ///< where a call goes if it does not fail
  bool mayFail = false;
  Failure failure;
  DWORD error = 0;
};

std::map<std::string, Import> imports;  // its elements do not move
unsigned firstRefused = 0;
unsigned lastRefused = 0;
unsigned refusable = 0;  // calls so far of functions that may fail
unsigned refusals = 0;
unsigned calls = 0;
std::string journal;
DWORD programThread = 0;

/// Returns where the call goes.
extern "C" void* DecideCall(Import* import) {
  if (GetCurrentThreadId() != programThread) {
    return import->target;
  }
  const DWORD error = GetLastError();
  ++calls;
  journal += std::string(import->name) + '\n';
  const bool fails = import->mayFail && ++refusable >= firstRefused && (lastRefused == 0 || refusable <= lastRefused);
  refusals += fails ? 1 : 0;
  SetLastError(fails ? import->error : error);
  return fails ? &import->failure : import->target;
}

// On the stack: the import, the return address, the arguments. The decision replaces the import, and `ret` jumps there
// with every register as it was.
extern "C" void ToDecide();
__asm__(
    ".globl _ToDecide\n"
    "_ToDecide:\n"
    "  pushal\n"
    "  pushl 32(%esp)\n"
    "  call _DecideCall\n"
    "  addl $4, %esp\n"
    "  movl %eax, 32(%esp)\n"
    "  popal\n"
    "  ret\n");

bool IsCode(const void* address) {
  MEMORY_BASIC_INFORMATION memory{};
  VirtualQuery(address, &memory, sizeof memory);
  return (memory.Protect & (PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY)) != 0;
}

}  // namespace

std::filesystem::path BesideTheProgram(const wchar_t* name) {
  wchar_t path[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::filesystem::path(path).replace_filename(name);
}

void RewriteImports(const std::map<std::string, void*>& replacements, std::istream& file) {
  programThread = GetCurrentThreadId();
  auto* const image = reinterpret_cast<char*>(GetModuleHandleW(nullptr));
  const auto* const headers =
      reinterpret_cast<IMAGE_NT_HEADERS*>(image + reinterpret_cast<IMAGE_DOS_HEADER*>(image)->e_lfanew);
  const IMAGE_DATA_DIRECTORY& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(image + table.VirtualAddress);
       library->FirstThunk != 0; ++library) {
    auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(image + library->OriginalFirstThunk);
    auto** places = reinterpret_cast<void**>(image + library->FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++places) {
      if (!IsCode(*places)) {
        continue;  // a variable
      }
      const char* const name = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(image + names->u1.AddressOfData)->Name;
      Import& import = imports[name];
      const auto replacement = replacements.find(name);
      import.name = name;
      import.target = replacement != replacements.end() ? replacement->second : *places;
      import.thunk.import = &import;
      import.thunk.distance = reinterpret_cast<char*>(&ToDecide) - reinterpret_cast<char*>(&import.thunk + 1);
      DWORD before = 0;
      VirtualProtect(&import, sizeof import, PAGE_EXECUTE_READWRITE, &before);
      VirtualProtect(places, sizeof *places, PAGE_READWRITE, &before);
      *places = &import.thunk;
      VirtualProtect(places, sizeof *places, before, &before);
    }
  }
  file >> firstRefused >> lastRefused;
  std::string name;
  unsigned bytes = 0, result = 0, error = 0;
  while (file >> name >> bytes >> result >> error) {
    if (const auto found = imports.find(name); found != imports.end()) {
      Import& import = found->second;
      import.mayFail = true;
      import.failure.result = result;
      import.failure.bytes = static_cast<std::uint16_t>(bytes);
      import.error = error;
    }
  }
}

unsigned CallsSoFar() { return calls; }
unsigned RefusalsSoFar() { return refusals; }

void MarkJournal(const std::string& text) { journal += "-- " + text + '\n'; }

void WriteJournal() { std::ofstream(BesideTheProgram(L"journal"), std::ios::binary) << journal; }

void Log(const std::string& line) {
  std::ofstream(BesideTheProgram(L"log"), std::ios::binary | std::ios::app) << line << '\n';
}
