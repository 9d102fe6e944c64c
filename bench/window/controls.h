#pragma once

#include <QString>
#include <functional>

namespace trellivar {

/// Runs the loop until the condition holds. Answers whether it did within ten seconds.
bool waitUntil(const std::function<bool()>& condition);

/// Runs the loop for a time.
void letPass(int milliseconds);

/// Presses the control of the main window whose name begins so, as assistive technology finds it,
/// as soon as it is there. Ends the process with a message when it does not come.
void press(const QString& name);

/// On the keyboard, in the main window.
void pressEscape();

} // namespace trellivar
