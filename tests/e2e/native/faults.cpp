#include "faults.h"

#include <cstring>
#include <fstream>
#include <list>
#include <vector>

namespace {

struct Rule {
  unsigned first = 0;
  unsigned last = 0;
  unsigned calls = 0;
  unsigned refusals = 0;
};

struct Import {
  std::string name;
  void* target = nullptr;   ///< where a call goes that does not fail
  void* failure = nullptr;  ///< code that returns the failure; null if it never fails
  DWORD error = 0;
};

std::list<Import> imports;  // its elements do not move
Rule rule;
std::vector<const std::string*> journal;
std::list<std::string> marks;
DWORD programThread = 0;

/// Machine code, appended to.
class Code {
 public:
  explicit Code(std::size_t size)
      : next_(static_cast<char*>(VirtualAlloc(nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE))) {}

  /// `push import; jmp ToDecide`
  void* Thunk(const Import* import, const void* decide) {
    char* const start = next_;
    Add(0x68, import);
    Add(0xE9, reinterpret_cast<const void*>(static_cast<const char*>(decide) - (next_ + 5)));
    return start;
  }

  /// `mov eax, result; ret bytes`
  void* Failure(unsigned result, unsigned bytes) {
    char* const start = next_;
    Add(0xB8, reinterpret_cast<const void*>(result));
    Add(0xC2, reinterpret_cast<const void*>(bytes));
    next_ -= 2;  // the operand of ret has two bytes
    return start;
  }

 private:
  void Add(int instruction, const void* operand) {
    *next_++ = static_cast<char>(instruction);
    std::memcpy(next_, &operand, sizeof operand);
    next_ += sizeof operand;
  }

  char* next_;
};

/// Returns where the call goes.
extern "C" void* DecideCall(Import* import) {
  if (GetCurrentThreadId() != programThread) {
    return import->target;
  }
  const DWORD error = GetLastError();
  journal.push_back(&import->name);
  void* next = import->target;
  DWORD nextError = error;
  if (import->failure != nullptr) {
    ++rule.calls;
    if (rule.calls >= rule.first && (rule.last == 0 || rule.calls <= rule.last)) {
      ++rule.refusals;
      next = import->failure;
      nextError = import->error;
    }
  }
  SetLastError(nextError);
  return next;
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

std::wstring BesideTheProgram(const wchar_t* name) {
  wchar_t path[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::wstring program = path;
  return program.substr(0, program.rfind(L'\\') + 1) + name;
}

void RewriteImports(const std::map<std::string, void*>& replacements, std::istream& file) {
  programThread = GetCurrentThreadId();
  Code code(1 << 16);
  std::map<std::string, Import*> byName;
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
      Import& import = imports.emplace_back();
      import.name = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(image + names->u1.AddressOfData)->Name;
      const auto replacement = replacements.find(import.name);
      import.target = replacement != replacements.end() ? replacement->second : *places;
      byName[import.name] = &import;
      DWORD before = 0;
      VirtualProtect(places, sizeof *places, PAGE_READWRITE, &before);
      *places = code.Thunk(&import, reinterpret_cast<const void*>(&ToDecide));
      VirtualProtect(places, sizeof *places, before, &before);
    }
  }
  file >> rule.first >> rule.last;
  std::string name;
  unsigned bytes = 0;
  unsigned result = 0;
  DWORD error = 0;
  while (file >> name >> bytes >> result >> error) {
    if (const auto found = byName.find(name); found != byName.end()) {
      found->second->failure = code.Failure(result, bytes);
      found->second->error = error;
    }
  }
}

unsigned CallsSoFar() { return journal.size(); }
unsigned RefusalsSoFar() { return rule.refusals; }

void MarkJournal(const std::string& text) { journal.push_back(&marks.emplace_back("-- " + text)); }

void WriteJournal() {
  std::ofstream file(BesideTheProgram(L"journal").c_str(), std::ios::binary);
  for (const std::string* const name : journal) {
    file << *name << '\n';
  }
}

void Log(const std::string& line) {
  std::ofstream(BesideTheProgram(L"log").c_str(), std::ios::binary | std::ios::app) << line << '\n';
}
