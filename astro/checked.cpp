#include "astro/checked.h"

namespace mMoon {

void RaiseArithmeticError(double result) {
  throw RuntimeError(std::isnan(result) ? ErrorNumber::InvalidProcedureCall : ErrorNumber::Overflow);
}

}  // namespace mMoon
