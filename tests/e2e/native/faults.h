// Makes calls of the program fail: its import table sends every call through a thunk.
#pragma once

#include <windows.h>

#include <filesystem>
#include <istream>
#include <map>
#include <string>

/// The path of a file beside the program.
std::filesystem::path BesideTheProgram(const wchar_t* name);

/// Replaces some of the program's imports, and makes others fail as the file says. Call it before the program's entry
/// point.
///
/// The file: FIRST LAST, then for each failing function FUNCTION ARGUMENT_BYTES RESULT ERROR. Calls of these functions
/// are counted together. Those from FIRST to LAST (0: for ever) only pop their arguments, set the last error and return
/// the result.
void RewriteImports(const std::map<std::string, void*>& replacements, std::istream& file);

/// How many calls the program has made so far, and how many of them failed.
unsigned CallsSoFar();
unsigned RefusalsSoFar();

/// Writes the names of all calls so far to the file "journal" beside the program, with the marks between them.
void WriteJournal();
void MarkJournal(const std::string& text);

/// Appends a line to the file "log" beside the program.
void Log(const std::string& line);
