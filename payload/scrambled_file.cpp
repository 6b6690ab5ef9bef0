#include "payload/scrambled_file.h"

#include <algorithm>
#include <span>
#include <vector>

#include "platform/framework/application.h"
#include "platform/framework/streams.h"
#include "setup/bundle_files.h"
#include "util/paths.h"

namespace zephin::ViewConst {
namespace {

using GlobalsVk::MyGetFolderItem;

constexpr std::size_t kBlock = std::size_t{256} * 1024;

using ChangeBytes = void (*)(std::span<char> block, std::uint64_t position);

/// Frees the disk space of a deleted file as far as it has been read, at the end of each stretch.
void FreeReadSpace(BinaryStream& file, std::uint64_t position) {
  constexpr std::uint64_t kStretch = 64 * kBlock;
  if (position % kStretch == 0) {
    file.ForgetWhatWasRead();
  }
}

/// Copies the rest of `from`, changed, block by block, up to its end or the first failed write.
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
    FreeReadSpace(from, position);
    RuntimeBackgroundTask();
  }
}

/// Also open for writing if possible: space can be freed only in such a file. A payload from a
/// read-only disc can't be written; it gets the right here, as it is deleted next.
Ref<BinaryStream> OpenToRead(const Ref<FolderItem>& item) {
  Ref<BinaryStream> stream = item->OpenAsBinaryFile(true);
  if (stream.IsNil() && !item->Directory()) {
    item->GrantAllRights();
    stream = item->OpenAsBinaryFile(true);
  }
  return stream.IsNil() ? item->OpenAsBinaryFile(false) : stream;
}

/// For a file that can't be deleted. Creating it again empties the file that is being read, so all
/// of it must be in memory first.
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
  // The deleted file can still be read from its open stream.
  const Ref<BinaryStream> to = item->CreateBinaryFile("");
  if (!to.IsNil()) {
    CopyChanged(*from, *to, encrypt ? ScrambleBytes : UnscrambleBytes);
    to->Close();
  }
}

}  // namespace zephin::ViewConst
