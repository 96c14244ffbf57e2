// The confirmation prompts of the destructive operations. Each prompt is
// written without a newline to the output stream, the answer read from the
// input stream through stdio; the end of input counts as "no". The forms
// taking no streams use standard input and standard output.
#ifndef CMD_CONFIRM_H_
#define CMD_CONFIRM_H_

#include <cstdio>
#include <string>

// cancel with a destination: true when the answer word is y, Y, yes or YES.
// Otherwise writes "No destinations cancelled" and returns false.
bool ConfirmDestinationCancel(FILE* in = stdin, FILE* out = stdout);

// dropwg: true when the first non-blank character answered is y or Y.
// Otherwise writes "No entries removed" and returns false.
bool ConfirmWorkGroupDrop(FILE* in = stdin, FILE* out = stdout);

// remove_exp: answered like ConfirmWorkGroupDrop.
bool ConfirmExpiredFragmentRemoval(FILE* in = stdin, FILE* out = stdout);

// Asks `prompt` until the answer word is y or yes (true) or n or no (false),
// case ignored; after any other word writes "'<word>' is not a valid answer."
// and the prompt again. Returns false at the end of input.
bool AskForUserConfirmation(const std::string& prompt);
bool AskForUserConfirmation(const std::string& prompt, FILE* in, FILE* out);

#endif  // CMD_CONFIRM_H_
