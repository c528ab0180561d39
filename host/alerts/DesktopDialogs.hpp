// Alerts and the clipboard of the desktop.
#pragma once

#include <memory>

#include "platform/drivers/AlertPresenter.hpp"
#include "platform/drivers/PasteboardDriver.hpp"

namespace nivlo {

/// Two drivers of one desktop; each may be destroyed before the other.
struct DesktopDialogs {
  /// Shows each alert in a window with the desktop's look; the newest takes all input until it is answered.
  std::unique_ptr<AlertPresenter> alerts;
  /// Offers the text, byte for byte, to every program on the desktop. It stays on the clipboard after this
  /// program has ended, until something else is copied.
  std::unique_ptr<PasteboardDriver> pasteboard;
};

/// Makes drivers that let nivlo-dialogs do the work. It is started for the first alert or text, and ends with
/// the last. If it ends by itself, what it was showing is shown again, once. Where that does not help, where
/// there is no desktop, and where a text is too large to be passed on, `fallbackAlerts` and
/// `fallbackPasteboard` take over.
DesktopDialogs makeDesktopDialogs(std::unique_ptr<AlertPresenter> fallbackAlerts,
                                  std::unique_ptr<PasteboardDriver> fallbackPasteboard);

}  // namespace nivlo
