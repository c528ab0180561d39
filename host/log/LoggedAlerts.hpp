// Alerts that are noted in the program's log file.
#pragma once

#include <memory>

#include "platform/drivers/AlertPresenter.hpp"

namespace nivlo {

/// Returns the same presenter, with a log line for each alert that is shown and for how it was answered. What
/// an alert says is never logged: it may hold what somebody scanned.
std::unique_ptr<AlertPresenter> logged(std::unique_ptr<AlertPresenter> alerts);

}  // namespace nivlo
