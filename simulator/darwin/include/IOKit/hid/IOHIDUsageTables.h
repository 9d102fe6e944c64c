#pragma once

// Usages of the USB HID usage tables. Our own declarations of the system's interface, for machines
// without it.

enum {
  kHIDPage_GenericDesktop = 0x01,
  kHIDPage_KeyboardOrKeypad = 0x07,
  kHIDPage_Button = 0x09,
  kHIDPage_Consumer = 0x0C,
  kHIDPage_Digitizer = 0x0D,
};

enum {
  kHIDUsage_GD_Mouse = 0x02,
  kHIDUsage_GD_Keyboard = 0x06,
  kHIDUsage_GD_Keypad = 0x07,
};

enum {
  kHIDUsage_Csmr_ConsumerControl = 0x01,
  kHIDUsage_Csmr_FastForward = 0xB3,
  kHIDUsage_Csmr_Rewind = 0xB4,
  kHIDUsage_Csmr_ScanNextTrack = 0xB5,
  kHIDUsage_Csmr_ScanPreviousTrack = 0xB6,
  kHIDUsage_Csmr_PlayOrPause = 0xCD,
  kHIDUsage_Csmr_Mute = 0xE2,
  kHIDUsage_Csmr_VolumeIncrement = 0xE9,
  kHIDUsage_Csmr_VolumeDecrement = 0xEA,
};
