// cyclectl-doc: writes the parts of cyclectl's documentation that follow
// from the front end's own tables, so that they cannot drift from the
// program:
//
//   cyclectl-doc man TEMPLATE OUT     the manual page: TEMPLATE with its
//                                     lines ".\" generated: operations" and
//                                     ".\" generated: options" replaced by
//                                     the two generated sections
//   cyclectl-doc completion OUT       the bash completion script
//
// Exit status 0, or 1 when a file cannot be read or written.
#include <strings.h>

#include <cctype>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "cmd/operations.h"
#include "cmd/option_rules.h"
#include "cmd/option_values.h"
#include "cmd/options.h"
#include "cmd/usage.h"
#include "dist/option_help.h"
#include "util/process.h"

namespace {

// The options whose values come from a fixed vocabulary, and how the front
// end compares them.
struct Vocabulary {
  option_e option;
  const NamedValue* names;
  const char* comparison;
};

const Vocabulary kVocabularies[] = {
    {OPT_RT, kRecordTypes, "case ignored"},
    {OPT_NTYPE, kNotificationTypes, "case ignored"},
    {OPT_DF, kDumpForms, "case ignored"},
    {OPT_COPY_TYPE, kCopyTypes, "case ignored; a number is taken as it is"},
    {OPT_SUBSYS, kSubsystemAbbreviations, "case counts; a number up to 17 is taken as it is"},
};

const Vocabulary* FindVocabulary(option_e option) {
  for (const Vocabulary& v : kVocabularies) {
    if (v.option == option) return &v;
  }
  return nullptr;
}

// The operation rows that carry a word, in table order.
std::vector<const OperInfo*> NamedOperations() {
  std::vector<const OperInfo*> rows;
  for (const OperInfo* row = operInfo + 1; row->id != OP_END; ++row) rows.push_back(row);
  return rows;
}

// The operation words whose allowed-option list holds `option`.
std::vector<std::string> OperationsTaking(option_e option) {
  std::vector<std::string> words;
  for (const OperInfo* row : NamedOperations()) {
    const option_e* allowed = FindOperationOptions(row->id);
    if (allowed != nullptr && IsOptionAllowed(allowed, option)) words.push_back(row->name);
  }
  return words;
}

std::string Join(const std::vector<std::string>& items, const char* separator) {
  std::string text;
  for (const std::string& item : items) {
    if (!text.empty()) text += separator;
    text += item;
  }
  return text;
}

std::vector<std::string> VocabularyNames(const Vocabulary& vocabulary) {
  std::vector<std::string> names;
  for (const NamedValue* row = vocabulary.names; row->name != nullptr; ++row) {
    names.push_back(row->name);
  }
  return names;
}

// ---- manual page ---------------------------------------------------------

// Text made safe for roff: backslashes and hyphens escaped, a leading control
// character disarmed.
std::string Roff(const std::string& text) {
  std::string out;
  if (!text.empty() && (text[0] == '.' || text[0] == '\'')) out = "\\&";
  for (char c : text) {
    if (c == '\\') {
      out += "\\e";
    } else if (c == '-') {
      out += "\\-";
    } else {
      out += c;
    }
  }
  return out;
}

// Words for a running list, each kept from being hyphenated.
std::vector<std::string> RoffWords(const std::vector<std::string>& items) {
  std::vector<std::string> out;
  for (const std::string& item : items) out.push_back("\\%" + Roff(item));
  return out;
}

void WriteOperations(std::ostream& out) {
  for (const OperInfo* row : NamedOperations()) {
    out << ".TP\n.B " << Roff(row->name) << '\n';
    if (strcmp(row->name, "ns") == 0) {
      out << "The short form of\n.BR new_session .\n";
      continue;
    }
    if (row->id == OP_HELP) {
      out << "Writes the general usage, the list of operations, on standard error.\n";
      continue;
    }
    std::ostringstream synopsis;
    CmdUsage(synopsis, USAGE_PUBLIC, row->id);
    std::istringstream lines(synopsis.str());
    std::string line;
    bool block = false;
    while (std::getline(lines, line)) {
      if (line.empty()) continue;
      if (!block) out << ".nf\n";
      block = true;
      // The synopses are indented by three blanks for the terminal.
      out << Roff(line.compare(0, 3, "   ") == 0 ? line.substr(3) : line) << '\n';
    }
    if (block) out << ".fi\n";
    std::vector<std::string> options;
    const option_e* allowed = FindOperationOptions(row->id);
    for (const option_e* o = allowed; o != nullptr && *o != OPT_END; ++o) {
      options.push_back(optNames[*o]);
    }
    out << (options.empty() ? std::string("Takes no options.")
                            : "Options: " + Join(RoffWords(options), ", ") + ".")
        << '\n';
    if (row->requiresAdmin) out << "Runs only for a local administrator.\n";
    if (row->requiresCatalog) out << "Opens the catalog before it runs.\n";
  }
}

// Writes the entry of one spelling; false when the option has no help.
bool WriteOption(std::ostream& out, const OptionRule& rule) {
  const OptionHelp* help = rule.option != OPT_NONE ? FindOptionHelp(rule.option) : nullptr;
  if (rule.option != OPT_NONE && help == nullptr) {
    fprintf(stderr, "cyclectl-doc: option %s has no help text (dist/option_help.cc)\n",
            optNames[rule.option]);
    return false;
  }
  out << ".TP\n";
  if (rule.takesValue) {
    out << ".BI \"" << Roff(rule.spelling) << " \" "
        << (help != nullptr && help->value != nullptr ? help->value : "value") << '\n';
  } else {
    out << ".B " << Roff(rule.spelling) << '\n';
  }
  if (rule.option == OPT_NONE || strcasecmp(rule.spelling, optNames[rule.option]) != 0) {
    if (rule.selects == OP_HELP) {
      out << "Asks for the usage: of the operation when one is given, else the general usage.\n";
    } else if (rule.option != OPT_NONE) {
      out << "Another spelling of\n.BR " << Roff(optNames[rule.option]) << " .\n";
    } else {
      out << "No longer needed: a notice says so and the run goes on.\n";
    }
    return true;
  }
  out << Roff(help->meaning) << '\n';
  if (const Vocabulary* v = FindVocabulary(rule.option)) {
    out << ".br\nOne of: " << Join(RoffWords(VocabularyNames(*v)), ", ") << " ("
        << Roff(v->comparison) << ").\n";
  }
  if (rule.selects != OP_NONE) {
    out << "Selects the operation\n.B " << Roff(OperationName(rule.selects))
        << "\nwhen none is given.\n";
  }
  if (help->fallback != nullptr) out << "Without it: " << Roff(help->fallback) << ".\n";
  std::vector<std::string> takers = OperationsTaking(rule.option);
  out << (takers.empty() ? std::string("Taken by no operation.")
                         : "Taken by: " + Join(RoffWords(takers), ", ") + ".")
      << '\n';
  return true;
}

bool WriteOptions(std::ostream& out) {
  for (const OptionRule* rule = optionRules; rule->spelling != nullptr; ++rule) {
    if (!WriteOption(out, *rule)) return false;
  }
  return true;
}

bool WriteManPage(const char* templatePath, std::ostream& out) {
  std::ifstream in(templatePath);
  if (!in) return false;
  std::string line;
  while (std::getline(in, line)) {
    if (line == ".\\\" generated: operations") {
      WriteOperations(out);
    } else if (line == ".\\\" generated: options") {
      if (!WriteOptions(out)) return false;
    } else {
      out << line << '\n';
    }
  }
  return !in.bad();
}

// ---- bash completion -----------------------------------------------------

// A word list for compgen -W, one word a line; blanks inside a word are
// escaped so that it stays one word.
std::string CompletionWords(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) {
    for (char c : word) {
      if (c == ' ') text += '\\';
      text += c;
    }
    text += '\n';
  }
  return text;
}

void WriteCompletion(std::ostream& out) {
  std::vector<std::string> words;
  for (const OperInfo* row : NamedOperations()) words.push_back(row->name);
  std::vector<std::string> valueOptions;
  std::vector<std::string> selecting;
  for (const OptionRule* rule = optionRules; rule->spelling != nullptr; ++rule) {
    if (rule->takesValue) valueOptions.push_back(rule->spelling);
    if (rule->selects != OP_NONE) selecting.push_back(rule->spelling);
  }

  out << "# bash completion for cyclectl, generated from its operation and option\n"
         "# tables by cyclectl-doc. Operation words first, then the options the\n"
         "# operation takes, then the values of options with a fixed vocabulary.\n\n";

  out << "_cyclectl_operation_options() {\n  case \"${1,,}\" in\n";
  for (const OperInfo* row : NamedOperations()) {
    std::vector<std::string> options = {"-help"};
    const option_e* allowed = FindOperationOptions(row->id);
    for (const option_e* o = allowed; o != nullptr && *o != OPT_END; ++o) {
      options.push_back(optNames[*o]);
    }
    out << "    " << row->name << ") echo '" << Join(options, " ") << "' ;;\n";
  }
  out << "  esac\n}\n\n";

  out << "_cyclectl_option_values() {\n  case \"${1,,}\" in\n";
  for (const Vocabulary& v : kVocabularies) {
    std::string name = optNames[v.option];
    for (char& c : name) c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
    out << "    " << name << ") printf '%s' '" << CompletionWords(VocabularyNames(v)) << "' ;;\n";
  }
  out << "    *) return 1 ;;\n  esac\n}\n\n";

  out << "_cyclectl() {\n"
         "  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}\n"
         "  local operation= word i\n"
         "  COMPREPLY=()\n"
         "  # The operation is the first word that is neither an option nor the\n"
         "  # value of one; a value never begins with '-'.\n"
         "  for ((i = 1; i < COMP_CWORD; i++)); do\n"
         "    word=${COMP_WORDS[i]}\n"
         "    case \"${word,,}\" in\n"
         "      "
      << Join(valueOptions, "|")
      << ")\n"
         "        [[ ${COMP_WORDS[i+1]} != -* ]] && ((i++)) ;;\n"
         "      -*) ;;\n"
         "      *) operation=${word,,}; break ;;\n"
         "    esac\n"
         "  done\n"
         "  case \"${prev,,}\" in\n"
         "    -test_import_frags)\n"
         "      compopt -o filenames 2>/dev/null\n"
         "      mapfile -t COMPREPLY < <(compgen -f -- \"$cur\")\n"
         "      return ;;\n"
         "  esac\n"
         "  local values\n"
         "  if values=$(_cyclectl_option_values \"$prev\"); then\n"
         "    local IFS=$'\\n'\n"
         "    COMPREPLY=($(compgen -W \"$values\" -- \"$cur\"))\n"
         "    [[ ${#COMPREPLY[@]} -gt 0 ]] && COMPREPLY=($(printf '%q\\n' \"${COMPREPLY[@]}\"))\n"
         "    return\n"
         "  fi\n"
         "  # Any other value is the user's to type.\n"
         "  case \"${prev,,}\" in\n"
         "    "
      << Join(valueOptions, "|")
      << ") return ;;\n"
         "  esac\n"
         "  if [[ -n $operation ]]; then\n"
         "    COMPREPLY=($(compgen -W \"$(_cyclectl_operation_options \"$operation\")\" -- "
         "\"$cur\"))\n"
         "  elif [[ $cur == -* ]]; then\n"
         "    COMPREPLY=($(compgen -W '"
      << Join(selecting, " ")
      << "' -- \"$cur\"))\n"
         "  else\n"
         "    COMPREPLY=($(compgen -W '"
      << Join(words, " ")
      << "' -- \"$cur\"))\n"
         "  fi\n"
         "}\n"
         "complete -F _cyclectl cyclectl\n";
}

bool WriteFile(const char* path, bool (*write)(std::ostream&, const char*), const char* arg) {
  std::ofstream out(path);
  if (!out || !write(out, arg)) return false;
  out.close();
  return !out.fail();
}

}  // namespace

int main(int argc, char** argv) {
  InitAbrevMap();
  InitOperationOptions();
  CmdName = "cyclectl";
  snprintf(lc_time, sizeof lc_time, "C");

  bool done = false;
  if (argc == 4 && strcmp(argv[1], "man") == 0) {
    done = WriteFile(
        argv[3], [](std::ostream& out, const char* t) { return WriteManPage(t, out); }, argv[2]);
  } else if (argc == 3 && strcmp(argv[1], "completion") == 0) {
    done = WriteFile(
        argv[2],
        [](std::ostream& out, const char*) {
          WriteCompletion(out);
          return true;
        },
        nullptr);
  } else {
    fprintf(stderr, "usage: cyclectl-doc man TEMPLATE OUT | completion OUT\n");
    return 2;
  }
  if (!done) {
    fprintf(stderr, "cyclectl-doc: cannot write %s\n", argv[argc - 1]);
    return 1;
  }
  return 0;
}
