#include "payload/scrambled_file.h"

#include <algorithm>
#include <span>
#include <vector>

#include "platform/framework/application.h"
#include "platform/framework/streams.h"
#include "setup/scrambling.h"
#include "util/paths.h"

namespace zephin::ViewConst {
namespace {

using GlobalsVk::MyGetFolderItem;

constexpr std::size_t kBlock = std::size_t{256} * 1024;
/// What is read before its room is given back.
constexpr std::uint64_t kStretch = 64 * kBlock;

using ChangeBytes = void (*)(std::span<char> block, std::uint64_t position);

/// Copies what is left of `from`, changed, block by block, until its end or the first failure.
void CopyChanged(BinaryStream& from, BinaryStream& to, ChangeBytes change) {
  std::vector<char> block(kBlock);
  std::uint64_t position = 0;
  while (!to.Failed()) {
    const std::span<char> part(block.data(), from.ReadInto(block));
    if (part.empty()) {
      return;
    }
    change(part, position);
    to.WriteFrom(part);
    position += part.size();
    if (position % kStretch == 0) {
      from.ForgetWhatWasRead();
    }
    RuntimeBackgroundTask();
  }
}

/// Opened to be written, too, if that may be, so that its room can be given back.
Ref<BinaryStream> OpenToRead(const Ref<FolderItem>& item) {
  const Ref<BinaryStream> stream = item->OpenAsBinaryFile(true);
  return stream.IsNil() ? item->OpenAsBinaryFile(false) : stream;
}

/// The file could not be deleted, so that making it anew empties the one that is being read: it has
/// to be in memory first.
void RewriteInMemory(BinaryStream& from, const Ref<FolderItem>& item, bool encrypt) {
  String data = from.Read(from.Length());
  if (encrypt) {
    data = Encrypt(data);
  } else {
    DecryptStr(data);
  }
  const Ref<BinaryStream> to = item->CreateBinaryFile("");
  if (!to.IsNil()) {
    to->Write(data);
    to->Close();
  }
}

}  // namespace

void EncryptDecryptFileEnd(const String& path, bool encrypt) {
  Ref<FolderItem> item = MyGetFolderItem(path);
  const Ref<BinaryStream> from = item.IsNil() ? nullptr : OpenToRead(item);
  if (from.IsNil()) {
    return;
  }
  item->Delete();
  item = MyGetFolderItem(path);
  if (item->Exists()) {
    RewriteInMemory(*from, item, encrypt);
    return;
  }
  // The old file goes on behind its open stream, so that it never has to be in memory whole, and
  // gives its room to the new one, so that the disk never has to hold both.
  const Ref<BinaryStream> to = item->CreateBinaryFile("");
  if (!to.IsNil()) {
    CopyChanged(*from, *to, encrypt ? ScrambleBytes : UnscrambleBytes);
    to->Close();
  }
}

}  // namespace zephin::ViewConst
