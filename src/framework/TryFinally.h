#pragma once
// The platform's try/finally: the closing work runs after the body whether it returns or
// raises. The closing work may raise itself (it often runs application events), so it is not
// left to a destructor; if it raises after a failed body, its error is the one that goes on.

#include <type_traits>
#include <utility>

namespace orv {

template <class Body, class Final>
auto TryFinally(Body&& body, Final&& final) -> decltype(body()) {
  using Result = decltype(body());
  if constexpr (std::is_void_v<Result>) {
    try {
      body();
    } catch (...) {
      final();
      throw;
    }
    final();
  } else {
    Result result = [&]() -> Result {
      try {
        return body();
      } catch (...) {
        final();
        throw;
      }
    }();
    final();
    return result;
  }
}

// Restores something that cannot fail when the scope ends, however it ends.
template <class Restore>
class TScopeExit {
 public:
  explicit TScopeExit(Restore restore) : FRestore(std::move(restore)) {}
  TScopeExit(const TScopeExit&) = delete;
  TScopeExit& operator=(const TScopeExit&) = delete;
  ~TScopeExit() { FRestore(); }

 private:
  Restore FRestore;
};

}  // namespace orv
