#include "cli/documents/completions.h"

#include <string_view>
#include <vector>

#include "cli/options/option_table.h"
#include "swr/hash/algorithms.h"

namespace cli {
namespace {

std::string Join(const std::vector<std::string>& words, std::string_view between) {
  std::string text;
  for (const std::string& word : words) {
    if (!text.empty()) text += between;
    text += word;
  }
  return text;
}

// The choices that a shell can offer for a kind of value; empty for files and free text.
std::vector<std::string> WordsFor(ValueKind kind) {
  std::vector<std::string> words;
  if (kind == ValueKind::Algorithms) {
    for (const swr::AlgoInfo& algo : swr::AllAlgos()) words.emplace_back(algo.tag);
  } else if (kind == ValueKind::Format) {
    words.assign(FormatNames().begin(), FormatNames().end());
  } else if (kind == ValueKind::Color) {
    words.assign(ColorNames().begin(), ColorNames().end());
  }
  return words;
}

std::string LongName(const OptionRow& row) { return "--" + std::string(row.longName); }
std::string ShortName(const OptionRow& row) { return std::string("-") + row.shortName; }

// "-a|--algorithm"
std::string NamesOf(const OptionRow& row, std::string_view between) {
  return row.shortName != 0 ? ShortName(row) + std::string(between) + LongName(row) : LongName(row);
}

// The text in single quotes, escaped for the shell.
std::string Quoted(std::string_view text, std::string_view quote) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') {
      quoted += quote;
    } else {
      quoted += c;
    }
  }
  return quoted + "'";
}

std::string BashCases() {
  std::string cases;
  for (const OptionRow& row : AllOptions()) {
    if (row.kind == ValueKind::None) continue;
    cases += "    " + NamesOf(row, " | ") + ")\n";
    if (row.kind == ValueKind::Algorithms) {
      // In a comma-separated list, the last name is completed.
      cases +=
          "      local done=\n"
          "      [[ $current != *,* ]] || done=${current%,*},\n"
          "      COMPREPLY=($(compgen -P \"$done\" -W '" +
          Join(WordsFor(row.kind), " ") + "' -- \"${current##*,}\"))\n";
    } else if (row.kind == ValueKind::File) {
      cases +=
          "      compopt -o filenames\n"
          "      mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n";
    } else if (row.kind != ValueKind::Text) {
      cases += "      COMPREPLY=($(compgen -W '" + Join(WordsFor(row.kind), " ") +
               "' -- \"$current\"))\n";
    }
    cases += "      return ;;\n";
  }
  return cases;
}

}  // namespace

std::string BashCompletion() {
  std::vector<std::string> names;
  for (const OptionRow& row : AllOptions()) {
    if (row.shortName != 0) names.push_back(ShortName(row));
    names.push_back(LongName(row));
  }
  return "# bash completion for swrhash; generated from its table of options\n"
         "_swrhash() {\n"
         "  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}\n"
         "  COMPREPLY=()\n"
         "  case $previous in\n" +
         BashCases() +
         "  esac\n"
         "  if [[ $current == -* ]]; then\n"
         "    COMPREPLY=($(compgen -W '" +
         Join(names, " ") +
         "' -- \"$current\"))\n"
         "  else\n"
         "    compopt -o filenames\n"
         "    mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
         "  fi\n"
         "}\n"
         "complete -F _swrhash swrhash\n";
}

std::string ZshCompletion() {
  std::string text =
      "#compdef swrhash\n"
      "# zsh completion for swrhash; generated from its table of options\n"
      "_arguments -s -S \\\n";
  for (const OptionRow& row : AllOptions()) {
    std::string help;
    for (const char c : row.help) {
      if (c == '[' || c == ']' || c == ':') help += '\\';
      help += c;
    }
    std::string action;
    if (row.kind != ValueKind::None) {
      action = ":" + std::string(row.valueName) + ":";
      if (row.kind == ValueKind::Algorithms) {
        action += "_sequence compadd - " + Join(WordsFor(row.kind), " ");
      } else if (row.kind == ValueKind::File) {
        action += "_files";
      } else if (row.kind != ValueKind::Text) {
        action += "(" + Join(WordsFor(row.kind), " ") + ")";
      }
    }
    const std::string assign = row.kind == ValueKind::None ? "" : "=";
    const std::string attach = row.kind == ValueKind::None ? "" : "+";
    std::string line = "  ";
    if (row.repeatable) {
      line += "'*'";
    } else if (row.shortName != 0) {
      line += "'(" + NamesOf(row, " ") + ")'";
    }
    line += row.shortName != 0 ? "{" + ShortName(row) + attach + "," + LongName(row) + assign + "}"
                               : LongName(row) + assign;
    text += line + Quoted("[" + help + "]" + action, "'\\''") + " \\\n";
  }
  return text + "  '*:file:_files'\n";
}

std::string FishCompletion() {
  std::string text = "# fish completion for swrhash; generated from its table of options\n";
  for (const OptionRow& row : AllOptions()) {
    text += "complete -c swrhash";
    if (row.shortName != 0) text += std::string(" -s ") + row.shortName;
    text += " -l " + std::string(row.longName);
    if (row.kind == ValueKind::File) text += " -r -F";
    if (row.kind == ValueKind::Text) text += " -x";
    if (const std::vector<std::string> words = WordsFor(row.kind); !words.empty()) {
      text += row.kind == ValueKind::Algorithms
                  ? " -x -a '(__fish_append , " + Join(words, " ") + ")'"
                  : " -x -a '" + Join(words, " ") + "'";
    }
    text += " -d " + Quoted(row.help, "\\'") + "\n";
  }
  return text;
}

std::string PowerShellCompletion() {
  std::string options;
  std::string values;
  for (const OptionRow& row : AllOptions()) {
    for (const std::string& name : row.shortName != 0 ? std::vector{ShortName(row), LongName(row)}
                                                      : std::vector{LongName(row)}) {
      options += "        @(" + Quoted(name, "''") + ", " + Quoted(row.help, "''") + ")\n";
      const std::vector<std::string> words = WordsFor(row.kind);
      if (words.empty()) continue;
      // Keys of a PowerShell hash table ignore case.
      values += "        " + Quoted(name, "''") + " = @('" + Join(words, "', '") + "')\n";
    }
  }
  return "# PowerShell completion for swrhash; generated from its table of options\n"
         "Register-ArgumentCompleter -Native -CommandName swrhash, swrhash64 -ScriptBlock {\n"
         "    param($word, $command, $position)\n"
         "    $options = @(\n" +
         options +
         "    )\n"
         "    $values = @{\n" +
         values +
         "    }\n"
         "    $words = @($command.CommandElements | Where-Object { $_.Extent.EndOffset -lt "
         "$position } | ForEach-Object { $_.ToString() })\n"
         "    $previous = if ($words.Count -gt 0) { $words[-1] } else { '' }\n"
         "    if ($values.ContainsKey($previous)) {\n"
         "        $done = if ($word.Contains(',')) { $word.Substring(0, $word.LastIndexOf(',') + "
         "1) "
         "} else { '' }\n"
         "        $values[$previous] | ForEach-Object { $done + $_ } |\n"
         "            Where-Object { $_.StartsWith($word) } |\n"
         "            ForEach-Object { [System.Management.Automation.CompletionResult]::new($_) }\n"
         "    } elseif ($word.StartsWith('-')) {\n"
         "        $options | Where-Object { $_[0].StartsWith($word) } | ForEach-Object {\n"
         "            [System.Management.Automation.CompletionResult]::new($_[0], $_[0], "
         "'ParameterName', $_[1])\n"
         "        }\n"
         "    }\n"
         "}\n";
}

}  // namespace cli
