// What happens to the program, for its log file.
#pragma once

#include <memory>
#include <string>

#include "platform/drivers/AlertPresenter.hpp"
#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// Names the program to the logger, which writes the name and the version at the head of its files. Before
/// the first line is logged.
void nameProgramInLog();

/// The same cameras; which one is opened, falls silent, comes back and is closed is logged.
std::unique_ptr<CameraDriver> logged(std::unique_ptr<CameraDriver> cameras);

/// The same presenter; that a dialog is shown and how it is answered is logged, what it says is not: that is
/// the business of whoever scanned it.
std::unique_ptr<AlertPresenter> logged(std::unique_ptr<AlertPresenter> alerts);

}  // namespace nivlo
