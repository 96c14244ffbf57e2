// A message catalog file as gencat(1) writes it, read with every size and
// offset checked against the file, so that a damaged, truncated or foreign
// file yields no texts instead of a crash.
//
// Layout (32-bit words in the byte order of the machine that wrote it):
//   magic 0x960408de, plane size S, plane depth D;
//   S * D slots of three words (set key, message number, text offset) in
//   little-endian order, then the same slots big-endian;
//   the texts, each ended by a NUL, offsets counted from the first.
// A message's slot is looked for in column (key * number) mod S of the D
// rows; gencat stores a set under its number plus one as the key.
#ifndef PLATFORM_MESSAGE_CATALOG_FILE_H_
#define PLATFORM_MESSAGE_CATALOG_FILE_H_

#include <cstddef>
#include <cstdint>
#include <string>

class MessageCatalogFile {
 public:
  // Takes the bytes of a catalog file. Returns false, and then holds no
  // texts, unless they are a whole little-endian catalog: the header, both
  // slot tables and a text area that ends with a NUL.
  bool Parse(std::string bytes);

  // The text of message `number` in set `set`, or null when there is none or
  // its slot points outside the text area. Valid as long as this object.
  const char* Find(int set, int number) const;

 private:
  uint32_t Word(size_t offset) const;

  std::string bytes_;
  uint32_t planeSize_ = 0;
  uint32_t planeDepth_ = 0;
  size_t texts_ = 0;  // offset of the text area in bytes_
};

#endif  // PLATFORM_MESSAGE_CATALOG_FILE_H_
