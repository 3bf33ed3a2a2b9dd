// Makes calls of the program fail: its import table sends every call through a thunk.
#pragma once

#include <windows.h>

#include <istream>
#include <map>
#include <string>

/// The path of a file beside the program.
std::wstring BesideTheProgram(const wchar_t* name);

/// Sends the program's imports through thunks. Some are replaced; others fail, as the file says. Call it before the
/// program's entry point.
///
/// The file: FIRST LAST, then for each function FUNCTION ARGUMENT_BYTES RESULT ERROR. Their calls are counted together;
/// from call FIRST to call LAST (0: for ever) they pop their arguments, set the last error and return the result.
void RewriteImports(const std::map<std::string, void*>& replacements, std::istream& file);

/// How many calls the program has made so far, and how many of them failed.
unsigned CallsSoFar();
unsigned RefusalsSoFar();

/// Writes the names of all calls so far to the file "journal" beside the program, with the marks between them.
void WriteJournal();
void MarkJournal(const std::string& text);

/// Appends a line to the file "log" beside the program.
void Log(const std::string& line);
