#include "runtime/checked.h"

namespace runtime {

void RaiseArithmeticError(double result) {
  throw RuntimeError(std::isnan(result) ? ErrorNumber::InvalidProcedureCall : ErrorNumber::Overflow);
}

}  // namespace runtime
