// Confirmation prompts and the answers they accept.
#include "cmd/confirm.h"

#include <cctype>

namespace {

void WritePrompt(FILE* out, const char* prompt) {
  fputs(prompt, out);
  fflush(out);
}

// Skips white space; returns the next character or EOF.
int SkipBlanks(FILE* in) {
  int c;
  do {
    c = getc(in);
  } while (c != EOF && isspace(c));
  return c;
}

// Reads one word delimited by white space into *word; false when the input
// ends before a word begins.
bool ReadWord(FILE* in, std::string* word) {
  word->clear();
  int c = SkipBlanks(in);
  if (c == EOF) return false;
  while (c != EOF && !isspace(c)) {
    word->push_back(static_cast<char>(c));
    c = getc(in);
  }
  if (c != EOF) ungetc(c, in);
  return true;
}

bool AnswersYesWithOneCharacter(FILE* in) {
  int c = SkipBlanks(in);
  return c == 'y' || c == 'Y';
}

bool RefuseEntries(FILE* out) {
  fputs("No entries removed\n", out);
  return false;
}

}  // namespace

bool ConfirmDestinationCancel(FILE* in, FILE* out) {
  WritePrompt(out,
              "This operation will also cancel other destinations if they are using the "
              "specified destination as source. Do you wish to proceed? (y/n): ");
  std::string word;
  ReadWord(in, &word);
  if (word == "y" || word == "Y" || word == "yes" || word == "YES") return true;
  fputs("No destinations cancelled\n", out);
  return false;
}

bool ConfirmWorkGroupDrop(FILE* in, FILE* out) {
  WritePrompt(out,
              "This operation will remove work group information in the database.  This will "
              "increase the time taken for SLP processing and may impact ongoing SLP operations. "
              " Do you wish to proceed ? (y/n):");
  return AnswersYesWithOneCharacter(in) || RefuseEntries(out);
}

bool ConfirmExpiredFragmentRemoval(FILE* in, FILE* out) {
  WritePrompt(out,
              "This operation will remove all expired image fragment entries in the database.  "
              "Any files containing backup images corresponding to these entries must be deleted "
              "manually.  Do you wish to proceed? (y/n) >");
  return AnswersYesWithOneCharacter(in) || RefuseEntries(out);
}

bool AskForUserConfirmation(const std::string& prompt) {
  return AskForUserConfirmation(prompt, stdin, stdout);
}

bool AskForUserConfirmation(const std::string& prompt, FILE* in, FILE* out) {
  WritePrompt(out, prompt.c_str());
  std::string word;
  while (ReadWord(in, &word)) {
    std::string upper = word;
    for (char& c : upper) c = static_cast<char>(toupper(static_cast<unsigned char>(c)));
    if (upper == "Y" || upper == "YES") return true;
    if (upper == "N" || upper == "NO") return false;
    fputc('\'', out);
    fwrite(word.data(), 1, word.size(), out);
    fputs("' is not a valid answer.\n", out);
    WritePrompt(out, prompt.c_str());
  }
  return false;
}
