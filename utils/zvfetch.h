// Memory ahead of its use.
#ifndef ZV_ZVFETCH_H
#define ZV_ZVFETCH_H

// Lets the processor fetch memory that will be read soon, while it goes on with something else. Any address
// will do, also null.
inline void zvPrefetch(const void* memory) {
#if defined(__GNUC__)
  __builtin_prefetch(memory);
#else
  static_cast<void>(memory);
#endif
}

#endif
