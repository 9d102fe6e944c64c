#pragma once

#include <QString>
#include <functional>

namespace trellivar {

/// Runs the loop until the condition holds. Answers whether it did within ten seconds.
bool waitUntil(const std::function<bool()>& condition);

/// Runs the loop for a time.
void letPass(int milliseconds);

/// Whether a window shows a control whose name begins with this, as assistive technology finds it.
bool isShown(const QString& name);

/// Presses that control as soon as it is there. Ends the process with a message when it does not
/// come.
void press(const QString& name);

} // namespace trellivar
