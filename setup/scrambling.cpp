#include "setup/scrambling.h"

#include <algorithm>
#include <span>
#include <string>

#include "platform/framework/application.h"
#include "setup/scrambling_bytes.h"

namespace zephin::ViewConst {
namespace {

constexpr std::size_t kBlock = 1 << 20;

/// Changes the bytes block by block and lets events run after each.
template <class Change>
String Changed(std::string bytes, Change change) {
  const std::span<char> all(bytes);
  for (std::size_t done = 0; done < all.size(); done += kBlock) {
    change(all.subspan(done, std::min(kBlock, all.size() - done)), done);
    RuntimeBackgroundTask();
  }
  return {std::move(bytes), Encoding::None};
}

}  // namespace

void DecryptStr(String& text) {
  text = Changed(std::move(text).Bytes(), UnscrambleBytes);
}

String Encrypt(const String& text) {
  return Changed(text.Bytes(), ScrambleBytes);
}

}  // namespace zephin::ViewConst
