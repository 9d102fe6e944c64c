#pragma once

// The main queue of the system's dispatcher, as far as the engine uses it. Our own declarations of
// the system's interface, for machines without it.

#include <cstdint>

using dispatch_queue_t = struct dispatch_queue_s*;
using dispatch_function_t = void (*)(void* context);
using dispatch_time_t = std::uint64_t; ///< opaque; made by dispatch_time

#define DISPATCH_TIME_NOW 0ULL
#define NSEC_PER_MSEC 1000000ULL
#define NSEC_PER_SEC 1000000000ULL

extern "C" {

dispatch_queue_t dispatch_get_main_queue();
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work);
dispatch_time_t dispatch_time(dispatch_time_t when, std::int64_t nanoseconds);
void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context,
                      dispatch_function_t work);

} // extern "C"
