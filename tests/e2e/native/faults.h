// Makes calls of the program fail: its import table sends every call through a thunk.
#pragma once

#include <windows.h>

#include <string>

/// The path of a file beside the program.
std::wstring BesideTheProgram(const wchar_t* name);
bool Exists(const wchar_t* name);

/// Sends the program's imports through thunks, which fail as the file "faults" beside the program says. Call it before
/// the program's entry point. `Supply` may replace a function; it returns null for the others.
///
/// The file: FIRST LAST, then for each function FUNCTION ARGUMENT_BYTES RESULT ERROR. Their calls are counted together;
/// from call FIRST to call LAST (0: for ever) they pop their arguments, set the last error and return the result.
void RewriteImports(void* (*Supply)(const std::string& name));

/// While it lives, the calls are the bench's own: none is counted, and none fails.
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
