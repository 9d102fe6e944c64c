#pragma once

// Names of HID properties. Our own declarations of the system's interface, for machines without it.

#define kIOHIDDeviceKey "IOHIDDevice"

#define kIOHIDTransportKey "Transport"
#define kIOHIDVendorIDKey "VendorID"
#define kIOHIDProductIDKey "ProductID"
#define kIOHIDManufacturerKey "Manufacturer"
#define kIOHIDProductKey "Product"
#define kIOHIDSerialNumberKey "SerialNumber"
#define kIOHIDLocationIDKey "LocationID"
#define kIOHIDPrimaryUsagePageKey "PrimaryUsagePage"
#define kIOHIDPrimaryUsageKey "PrimaryUsage"
#define kIOHIDDeviceUsagePageKey "DeviceUsagePage"
#define kIOHIDDeviceUsageKey "DeviceUsage"
#define kIOHIDDeviceUsagePairsKey "DeviceUsagePairs"

enum {
  kIOHIDOptionsTypeNone = 0,
  kIOHIDOptionsTypeSeizeDevice = 1,
};
