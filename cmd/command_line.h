// CommandLine: the settled result of parsing one run's arguments, the
// operation with its two table flags and the value of every option.
#ifndef CMD_COMMAND_LINE_H_
#define CMD_COMMAND_LINE_H_

struct CommandLine {
  int operation = 0;
  bool requiresAdmin = false;
  bool requiresCatalog = false;
};

#endif  // CMD_COMMAND_LINE_H_
