/// @file Values of the host's enumerations that only the simulated host needs, with the real host's names.
#pragma once

namespace cad_host {

/// Further options of ISldWorks::OpenDoc6.
enum swOpenDocOptions_e : long {
  swOpenDocOptions_ReadOnly = 2,
  swOpenDocOptions_ViewOnly = 4,
};

/// What IComponent2::SetSuppression2 returns.
enum swSuppressionError_e : long {
  swSuppressionBadState = 1,
  swSuppressionChangeOk = 2,
  swSuppressionChangeFailed = 3,
};

/// What ICustomPropertyManager::Set returns.
enum swCustomInfoSetResult_e : long {
  swCustomInfoSetResult_OK = 0,
  swCustomInfoSetResult_NotPresent = 1,
  swCustomInfoSetResult_TypeMismatch = 2,
};

/// What ICommandManager::CreateCommandGroup2 stores in its Errors argument.
enum swCreateCommandGroupErrors : long {
  swCreateCommandGroup_Success = 1,
  swCreateCommandGroup_Exists = 2,
};

}  // namespace cad_host
