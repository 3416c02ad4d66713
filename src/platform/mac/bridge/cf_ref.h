#pragma once
#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace nimbletype {

// Owner of one reference to a Core Foundation object; a copy is one more reference to the same object.
template <typename T>
class CFRef {
 public:
  CFRef() = default;
  // Takes over the reference that a function named Create or Copy returned.
  static CFRef adopt(T ref) { return CFRef(ref); }
  // Adds a reference to an object that somebody else owns.
  static CFRef retain(T ref) {
    if (ref) CFRetain(ref);
    return CFRef(ref);
  }

  CFRef(const CFRef& other) : CFRef(retain(other.ref_)) {}
  CFRef(CFRef&& other) noexcept : ref_(std::exchange(other.ref_, nullptr)) {}
  CFRef& operator=(CFRef other) noexcept {
    std::swap(ref_, other.ref_);
    return *this;
  }
  ~CFRef() {
    if (ref_) CFRelease(ref_);
  }

  T get() const { return ref_; }
  explicit operator bool() const { return ref_ != nullptr; }

 private:
  explicit CFRef(T ref) : ref_(ref) {}
  T ref_ = nullptr;
};

// Calls a function that returns a new reference through its last argument; empty when it left none there.
template <typename T, typename Function>
CFRef<T> copiedBy(Function&& function) {
  T out = nullptr;
  std::forward<Function>(function)(&out);
  return CFRef<T>::adopt(out);
}

// A source that is served by the main run loop, menus and modal windows included, as long as this lives.
class MainRunLoopSource {
 public:
  explicit MainRunLoopSource(CFRef<CFRunLoopSourceRef> source) : source_(std::move(source)) {
    if (source_) CFRunLoopAddSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
  }
  ~MainRunLoopSource() {
    if (source_) CFRunLoopRemoveSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
  }
  MainRunLoopSource(const MainRunLoopSource&) = delete;
  MainRunLoopSource& operator=(const MainRunLoopSource&) = delete;

 private:
  CFRef<CFRunLoopSourceRef> source_;
};

}  // namespace nimbletype
