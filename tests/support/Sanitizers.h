#pragma once

// HK_SANITIZED is defined when the test is built with AddressSanitizer or ThreadSanitizer, which end a
// program that dies, runs out of memory or overflows a stack in ways of their own.

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) // g++
#define HK_SANITIZED
#elif defined(__has_feature) // clang
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define HK_SANITIZED
#endif
#endif
