#pragma once

#include <string>

#include "report/moon_report.h"

/// A form that takes whatever it is given.
class FuzzForm final : public mMoon::ReportForm {
 public:
  forms::DrawingList drawing;
  int linesWritten = 0;

  forms::DrawingList& Drawing() override { return drawing; }
  void SetLabel1Caption(const std::wstring& /*caption*/) override {}
  void SetMoonLine(std::size_t /*index*/, const std::wstring& /*text*/) override { ++linesWritten; }
};
