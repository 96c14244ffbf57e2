// The bounds-checked gencat catalog reader.
#include "platform/message_catalog_file.h"

namespace {

const uint32_t kMagic = 0x960408de;
const size_t kHeaderBytes = 12;
const size_t kSlotBytes = 12;

}  // namespace

uint32_t MessageCatalogFile::Word(size_t offset) const {
  const unsigned char* p = reinterpret_cast<const unsigned char*>(bytes_.data()) + offset;
  return static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 |
         static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[3]) << 24;
}

bool MessageCatalogFile::Parse(std::string bytes) {
  bytes_ = std::move(bytes);
  planeSize_ = planeDepth_ = 0;
  texts_ = 0;
  if (bytes_.size() < kHeaderBytes || Word(0) != kMagic) return false;
  const uint64_t size = Word(4);
  const uint64_t depth = Word(8);
  // Both tables must fit in the file; the products stay far below 2^64.
  const uint64_t room = (bytes_.size() - kHeaderBytes) / (2 * kSlotBytes);
  if (size == 0 || depth == 0 || size > room || depth > room / size) return false;
  const size_t texts = kHeaderBytes + static_cast<size_t>(size * depth) * 2 * kSlotBytes;
  // Every text must end inside the file: the last byte ends the last one.
  if (texts < bytes_.size() && bytes_.back() != '\0') return false;
  planeSize_ = static_cast<uint32_t>(size);
  planeDepth_ = static_cast<uint32_t>(depth);
  texts_ = texts;
  return true;
}

const char* MessageCatalogFile::Find(int set, int number) const {
  if (planeSize_ == 0 || set < 1 || number < 1) return nullptr;
  const uint32_t key = static_cast<uint32_t>(set) + 1;
  const uint64_t column = static_cast<uint64_t>(key) * static_cast<uint32_t>(number) % planeSize_;
  for (uint64_t row = 0; row < planeDepth_; ++row) {
    const size_t slot = kHeaderBytes + static_cast<size_t>(row * planeSize_ + column) * kSlotBytes;
    if (Word(slot) != key || Word(slot + 4) != static_cast<uint32_t>(number)) continue;
    const uint64_t offset = Word(slot + 8);
    if (offset >= bytes_.size() - texts_) return nullptr;
    return bytes_.data() + texts_ + offset;
  }
  return nullptr;
}
