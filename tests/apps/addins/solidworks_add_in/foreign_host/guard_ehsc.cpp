#include "guards.h"

Result CallWithoutGuard(const Call& call) { return call.run(call.context); }

Result CallUnderEhsc(const Call& call) {
  try {
    return call.run(call.context);
  } catch (...) {
    return kCaught;
  }
}

Result CallUnderSeh(const Call& call) {
  __try {
    return call.run(call.context);
  } __except (1) {
    return kCaught;
  }
}
