#pragma once

// Names of serial port properties. Our own declarations of the system's interface, for machines
// without it.

#define kIOSerialBSDServiceValue "IOSerialBSDClient"
#define kIOCalloutDeviceKey "IOCalloutDevice"
#define kIODialinDeviceKey "IODialinDevice"
