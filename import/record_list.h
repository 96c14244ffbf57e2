// RecordList: the list a notification query appends its rows to. All rows
// of a table are held before the first is printed, and a record is mostly
// the unused rest of its 257-byte texts, so the list keeps each record with
// its runs of zero bytes left out (a few hundred bytes become about a
// hundred) in 2 MiB blocks, asked to be backed by huge pages where the
// system offers them. Iteration gives every record back whole, in the order
// appended, through a buffer of the iterator's own.
#ifndef IMPORT_RECORD_LIST_H_
#define IMPORT_RECORD_LIST_H_

#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>
#include <new>
#include <vector>

namespace record_list_internal {

// Records are encoded in words of this many bytes.
constexpr size_t kMinZeroRun = 8;

// The longest encoding of `size` bytes: each piece costs 4 bytes of lengths
// and holds at least one word, except the last.
constexpr size_t MaxEncodedSize(size_t size) { return size + 4 * (size / kMinZeroRun + 2); }

// Writes `size` bytes of `record` at `out` as pieces of (zero count, literal
// count, literal bytes), the counts 16-bit; returns the end.
unsigned char* Encode(const unsigned char* record, size_t size, unsigned char* out);
// Rebuilds the `size` bytes of a record from its encoding at `in`; returns
// the end of the encoding.
const unsigned char* Decode(const unsigned char* in, size_t size, unsigned char* record);

}  // namespace record_list_internal

template <typename Record>
class RecordList {
  static_assert(sizeof(Record) < 65536, "record lengths are kept in 16 bits");

 public:
  static constexpr size_t kBlockBytes = 2 << 20;

  RecordList() = default;
  RecordList(const RecordList&) = delete;
  RecordList& operator=(const RecordList&) = delete;

  size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }

  // Appends a copy of `record`. Throws std::bad_alloc when memory runs out.
  void push_back(const Record& record) {
    using namespace record_list_internal;
    if (blocks_.empty() || kBlockBytes - blocks_.back().used < MaxEncodedSize(sizeof(Record))) {
      void* block = aligned_alloc(kBlockBytes, kBlockBytes);
      if (block == nullptr) throw std::bad_alloc();
      madvise(block, kBlockBytes, MADV_HUGEPAGE);  // a hint; refused on some systems
      blocks_.push_back(
          Block{std::unique_ptr<unsigned char, Free>(static_cast<unsigned char*>(block)), 0});
    }
    Block& last = blocks_.back();
    unsigned char* start = last.bytes.get() + last.used;
    last.used = Encode(reinterpret_cast<const unsigned char*>(&record), sizeof(Record), start) -
                last.bytes.get();
    lastRecord_ = start;
    ++size_;
  }

  // The last record appended; the list must not be empty.
  Record back() const {
    Record r;
    record_list_internal::Decode(lastRecord_, sizeof(Record), reinterpret_cast<unsigned char*>(&r));
    return r;
  }

  class const_iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = Record;
    using difference_type = std::ptrdiff_t;
    using pointer = const Record*;
    using reference = const Record&;

    const_iterator(const RecordList* list, size_t block) : list_(list), block_(block) { Load(); }
    // Valid until the iterator moves.
    const Record& operator*() const { return record_; }
    const Record* operator->() const { return &record_; }
    const_iterator& operator++() {
      offset_ = next_;
      Load();
      return *this;
    }
    bool operator==(const const_iterator& other) const {
      return block_ == other.block_ && offset_ == other.offset_;
    }
    bool operator!=(const const_iterator& other) const { return !(*this == other); }

   private:
    // Decodes the record at the position, moving past the end of a block.
    void Load() {
      while (block_ < list_->blocks_.size() && offset_ == list_->blocks_[block_].used) {
        ++block_;
        offset_ = 0;
      }
      if (block_ == list_->blocks_.size()) return;
      const unsigned char* base = list_->blocks_[block_].bytes.get();
      next_ = record_list_internal::Decode(base + offset_, sizeof(Record),
                                           reinterpret_cast<unsigned char*>(&record_)) -
              base;
    }

    const RecordList* list_;
    size_t block_;
    size_t offset_ = 0;
    size_t next_ = 0;
    Record record_;
  };
  const_iterator begin() const { return const_iterator(this, 0); }
  const_iterator end() const { return const_iterator(this, blocks_.size()); }
  Record front() const { return *begin(); }

 private:
  struct Free {
    void operator()(unsigned char* block) const { free(block); }
  };
  struct Block {
    std::unique_ptr<unsigned char, Free> bytes;
    size_t used;  // bytes of encoded records
  };

  std::vector<Block> blocks_;
  const unsigned char* lastRecord_ = nullptr;
  size_t size_ = 0;
};

#endif  // IMPORT_RECORD_LIST_H_
