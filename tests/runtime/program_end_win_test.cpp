// The message box of a run-time error. It is a program of its own: a process ends only once.

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "runtime/program_end.h"
#include "runtime/runtime_error.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&FatalAppExitA) fatalAppExitSlot asm("__imp__FatalAppExitA@8");
extern "C" decltype(&MessageBoxA) messageBoxSlot asm("__imp__MessageBoxA@16");

namespace {

struct Box {
  HWND owner;
  std::string text, caption;
  UINT type;
};

std::vector<Box> boxes;

int WINAPI NoteBox(HWND owner, LPCSTR text, LPCSTR caption, UINT type) {
  boxes.push_back({.owner = owner, .text = text, .caption = caption, .type = type});
  return IDOK;
}

std::vector<std::string> lastWords;

int WINAPI RefuseBox(HWND, LPCSTR, LPCSTR, UINT) { return 0; }

void WINAPI NoteLastWords(UINT, LPCSTR text) { lastWords.emplace_back(text); }

void EndOn(auto exception) {
  try {
    throw exception;
  } catch (...) {
    runtime::EndOnCurrentException();
  }
}

TEST(RunTimeBox, ShowsTheFirstOfSeveralErrors) {
  const SystemStandIn standIn(messageBoxSlot, &NoteBox);
  EXPECT_EQ(runtime::ReportRuntimeError(), 0);
  EXPECT_TRUE(boxes.empty()) << "there was no error";
  EXPECT_FALSE(runtime::Ending());

  EndOn(std::bad_alloc());
  EXPECT_TRUE(runtime::Ending());
  EXPECT_TRUE(boxes.empty()) << "no box in the middle of a handler";
  EndOn(runtime::RuntimeError(runtime::ErrorNumber::DiskFull));
  EndOn(std::logic_error("any other"));

  EXPECT_EQ(runtime::ReportRuntimeError(), 1);
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].text, "Run-time error '7':\n\nOut of memory");
  EXPECT_EQ(boxes[0].caption, "Tidewell");
  EXPECT_EQ(boxes[0].owner, nullptr);
  EXPECT_EQ(boxes[0].type & MB_TYPEMASK, UINT{MB_OK});
  EXPECT_EQ(boxes[0].type & MB_ICONMASK, UINT{MB_ICONERROR});
  EXPECT_EQ(boxes[0].type & MB_MODEMASK, UINT{MB_TASKMODAL}) << "disables the program's own windows meanwhile";
  EXPECT_TRUE(boxes[0].type & MB_SETFOREGROUND);
  EXPECT_TRUE(boxes[0].type & MB_TOPMOST);

  const SystemStandIn refusing(messageBoxSlot, &RefuseBox);
  const SystemStandIn last(fatalAppExitSlot, &NoteLastWords);
  EXPECT_EQ(runtime::ReportRuntimeError(), 1);
  EXPECT_EQ(lastWords, std::vector{boxes[0].text});
}

}  // namespace
