// Calls of the program that fail on purpose: its import table leads every call through a thunk.
#pragma once

#include <windows.h>

#include <string>

/// The program's own folder, with a name in it.
std::wstring BesideTheProgram(const wchar_t* name);
bool Exists(const wchar_t* name);

/// Leads the program's imports through thunks that fail by the rule in the file "faults" beside the program. To be
/// called before the program's entry point. `Supply` may replace a function; it returns null for the others.
///
/// The file: FIRST LAST, then for each function FUNCTION ARGUMENT_BYTES RESULT ERROR. Their calls are counted together;
/// from call FIRST to call LAST (0: for ever) they pop their arguments, set the last error and return the result.
void RewriteImports(void* (*Supply)(const std::string& name));

/// Within its life no call is counted, and none fails: the bench itself is at work.
class BenchAtWork {
 public:
  BenchAtWork();
  ~BenchAtWork();
  BenchAtWork(const BenchAtWork&) = delete;
  BenchAtWork& operator=(const BenchAtWork&) = delete;
};

/// How many calls the program has made so far.
unsigned CallsSoFar();

/// Writes the names of all calls so far to the file "journal" beside the program, with the marks between them.
void WriteJournal();
void MarkJournal(const std::string& text);

/// Appends a line to the file "log" beside the program.
void Log(const std::string& line);
