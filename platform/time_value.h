// ACE_Time_Value: the time value of the ORB wrapper's interface and of the
// duration formatting, seconds and microseconds. The platform keeps its own
// small class under that name, so that no run loads a whole framework
// library for one value type (docs/performance.md).
#ifndef PLATFORM_TIME_VALUE_H_
#define PLATFORM_TIME_VALUE_H_

#include <sys/types.h>
#include <time.h>

class ACE_Time_Value {
 public:
  static const ACE_Time_Value zero;

  constexpr ACE_Time_Value() : sec_(0), usec_(0) {}
  // Normalized: the microseconds end up in (-1000000, 1000000) with the sign
  // of the seconds, the whole seconds among them carried over.
  constexpr explicit ACE_Time_Value(time_t sec, suseconds_t usec = 0) : sec_(sec), usec_(usec) {
    normalize();
  }

  constexpr time_t sec() const { return sec_; }
  constexpr suseconds_t usec() const { return usec_; }

  friend constexpr bool operator<(const ACE_Time_Value& a, const ACE_Time_Value& b) {
    return a.sec_ < b.sec_ || (a.sec_ == b.sec_ && a.usec_ < b.usec_);
  }
  friend constexpr bool operator>(const ACE_Time_Value& a, const ACE_Time_Value& b) {
    return b < a;
  }
  friend constexpr bool operator<=(const ACE_Time_Value& a, const ACE_Time_Value& b) {
    return !(b < a);
  }
  friend constexpr bool operator>=(const ACE_Time_Value& a, const ACE_Time_Value& b) {
    return !(a < b);
  }
  friend constexpr bool operator==(const ACE_Time_Value& a, const ACE_Time_Value& b) {
    return a.sec_ == b.sec_ && a.usec_ == b.usec_;
  }
  friend constexpr bool operator!=(const ACE_Time_Value& a, const ACE_Time_Value& b) {
    return !(a == b);
  }

 private:
  static constexpr suseconds_t kOneSecond = 1000000;

  constexpr void normalize() {
    sec_ += usec_ / kOneSecond;
    usec_ %= kOneSecond;
    if (sec_ > 0 && usec_ < 0) {
      --sec_;
      usec_ += kOneSecond;
    } else if (sec_ < 0 && usec_ > 0) {
      ++sec_;
      usec_ -= kOneSecond;
    }
  }

  time_t sec_;
  suseconds_t usec_;
};

inline constexpr ACE_Time_Value ACE_Time_Value::zero{};

// The ORB wrapper accepts a timer queue and leaves it alone; only the name of
// the type is needed.
class ACE_Timer_Queue;

#endif  // PLATFORM_TIME_VALUE_H_
