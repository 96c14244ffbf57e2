// ACE_Arg_Shifter_T: the walker over a program's arguments that the command
// line is read with, after the argument-shifter contract of the ORB's
// framework:
//   - the walk starts at argv[0] of what it is given and ends when no
//     argument is left;
//   - an option is next when the current argument begins with '-', a
//     parameter when an argument is left that does not;
//   - cur_arg_strncasecmp(name) is 0 when the current argument equals name
//     over its whole length without regard to case, the length of name when
//     the argument merely begins with it, and -1 otherwise;
//   - consume_arg() steps past the current argument.
// Unlike the framework's walker it neither reorders the vector nor
// allocates: the walk only reads it.
#ifndef PLATFORM_ARG_SHIFTER_H_
#define PLATFORM_ARG_SHIFTER_H_

#include <cctype>
#include <cstring>

template <class CHAR_TYPE>
class ACE_Arg_Shifter_T {
 public:
  // `argv` holds `argc` arguments and must outlive the walker.
  ACE_Arg_Shifter_T(int& argc, CHAR_TYPE** argv) : argv_(argv), count_(argc < 0 ? 0 : argc) {}

  // The current argument, or null when none is left.
  const CHAR_TYPE* get_current() const { return is_anything_left() ? argv_[current_] : nullptr; }
  bool is_anything_left() const { return current_ < count_; }
  bool is_option_next() const { return is_anything_left() && argv_[current_][0] == '-'; }
  bool is_parameter_next() const { return is_anything_left() && argv_[current_][0] != '-'; }

  int cur_arg_strncasecmp(const CHAR_TYPE* name) const {
    if (!is_anything_left() || name == nullptr) return -1;
    const CHAR_TYPE* arg = argv_[current_];
    size_t length = strlen(name);
    for (size_t i = 0; i < length; ++i) {
      if (tolower(static_cast<unsigned char>(arg[i])) !=
          tolower(static_cast<unsigned char>(name[i]))) {
        return -1;  // also where the argument ends first
      }
    }
    return arg[length] == '\0' ? 0 : static_cast<int>(length);
  }

  // Steps past the current argument; returns false when none was left.
  bool consume_arg() {
    if (!is_anything_left()) return false;
    ++current_;
    return true;
  }

 private:
  CHAR_TYPE** argv_;
  int count_;
  int current_ = 0;
};

#endif  // PLATFORM_ARG_SHIFTER_H_
