// The argument walk, on the platform's argument shifter. Its cur_arg_strncasecmp
// returns 0 only when the argument equals the name over its whole length
// (case ignored), and a positive offset for an argument that merely begins
// with the name; only 0 counts as a match here. Values are taken by hand,
// since get_the_parameter would also accept a value run together with the
// option name.
#include "cmd/walk.h"

#include "platform/arg_shifter.h"

#include <cstdio>

#include "cmd/operations.h"
#include "cmd/option_rules.h"
#include "util/message.h"
#include "util/process.h"

namespace {

void SelectOperation(CommandLine& line, const OperInfo& row) {
  line.operation = row.id;
  line.requiresAdmin = row.requiresAdmin;
  line.requiresCatalog = row.requiresCatalog;
}

void WalkOperationWord(ArgumentWalk& walk, const char* word) {
  CommandLine& line = walk.line;
  const OperInfo* row = FindOperation(word);
  if (row == nullptr) {
    PrintMsg(stderr, "SmeSlp0510N", "%s is not a recognized operation", word);
    walk.errorSeen = true;
    line.operation = OP_NONE;
    line.requiresAdmin = false;
    line.requiresCatalog = false;
  } else if (line.operation != OP_NONE && line.operation != row->id) {
    PrintMsg(stderr, "SmeSlp0520N", "multiple operations  specified");
    walk.errorSeen = true;
  } else {
    SelectOperation(line, *row);
  }
}

void ReportRejectedValue(const OptionRule& rule, const char* value) {
  const char* name = optNames[rule.option];
  switch (rule.error) {
    case VALUE_NOT_RECOGNIZED:
      PrintMsg(stderr, "SmeSlp0490N", "%s argument %s not a recognized value", name, value);
      break;
    case VALUE_INVALID:
      PrintMsg(stderr, "SmeSlp0570N", "Invalid value supplied for %s option", name);
      break;
    case VALUE_NEVER_REJECTED:
      break;
  }
}

// Handles the option the shifter stands on and steps past it and its value.
void WalkOption(ArgumentWalk& walk, ACE_Arg_Shifter_T<char>& shifter) {
  const OptionRule* rule = optionRules;
  while (rule->spelling != nullptr && shifter.cur_arg_strncasecmp(rule->spelling) != 0) ++rule;
  if (rule->spelling == nullptr) {
    PrintMsg(stderr, "SmeSlp0500N", "%s is not a recognized option", shifter.get_current());
    walk.errorSeen = true;
    shifter.consume_arg();
    return;
  }

  CommandLine& line = walk.line;
  // The operation an option selects is taken before its value is looked at.
  if (rule->selects != OP_NONE && line.operation == OP_NONE) {
    SelectOperation(line, *OperationRow(rule->selects));
  }
  shifter.consume_arg();

  const char* value = nullptr;
  if (rule->takesValue) {
    if (!shifter.is_parameter_next()) {
      PrintMsg(stderr, "SmeSlp0470N", "No value supplied for %s option", optNames[rule->option]);
      walk.errorSeen = true;
      // The argument that stood where the value belongs is passed over
      // unread: "-client -U" does not also switch the output form.
      if (shifter.is_anything_left()) shifter.consume_arg();
      return;
    }
    value = shifter.get_current();
    shifter.consume_arg();
  }

  if (!rule->store(line, value)) {
    ReportRejectedValue(*rule, value);
    walk.errorSeen = true;
    return;
  }
  if (rule->option != OPT_NONE) line.optionSeen[rule->option] = true;
}

}  // namespace

ArgumentWalk WalkArguments(int argc, char** argv) {
  ArgumentWalk walk;
  if (argc < 2) return walk;

  // The shifter reads the vector in place and neither reorders nor copies it.
  int count = argc - 1;
  ACE_Arg_Shifter_T<char> shifter(count, argv + 1);

  while (shifter.is_anything_left()) {
    ++walk.argumentCount;
    if (shifter.is_option_next()) {
      WalkOption(walk, shifter);
    } else {
      WalkOperationWord(walk, shifter.get_current());
      shifter.consume_arg();
    }
  }
  return walk;
}
