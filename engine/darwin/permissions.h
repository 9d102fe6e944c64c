#pragma once

/// What the user has permitted this process. Queries only: nothing is asked of the user.
namespace trellivar::darwin {

/// Accessibility: events may be filtered and posted.
bool isAccessibilityGranted();
/// Input Monitoring: HID input may be read. A process that never asked counts as refused.
bool isInputMonitoringGranted();

} // namespace trellivar::darwin
