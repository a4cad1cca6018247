// The tables and the page in HTML and in Markdown.

#include <stdexcept>
#include <string>

#include "fmi/fmu_instance.h"
#include "model/tables/scenario.h"
#include "packaging/describe.h"

namespace {

constexpr OutputGroup kGroups[] = {OutputGroup::hydrogen, OutputGroup::air, OutputGroup::cooling,
                                   OutputGroup::electrical, OutputGroup::displays};

std::string html_text(std::string_view plain) {
  std::string text;
  for (const char c : plain) {
    switch (c) {
      case '&':
        text += "&amp;";
        break;
      case '<':
        text += "&lt;";
        break;
      case '>':
        text += "&gt;";
        break;
      default:
        text += c;
    }
  }
  return text;
}

std::string html(const Table& table) {
  std::string text = "<div class=\"wide\"><table>\n<thead><tr>";
  for (const Table::Column& column : table.columns) {
    text +=
        join({column.kind == Table::Kind::number ? "<th class=\"number\">" : "<th>", html_text(column.title), "</th>"});
  }
  text += "</tr></thead>\n<tbody>\n";
  for (const auto& row : table.rows) {
    text += "<tr>";
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::string cell = html_text(row[i]);
      switch (table.columns[i].kind) {
        case Table::Kind::text:
          text += join({"<td>", cell, "</td>"});
          break;
        case Table::Kind::name:
          text += join({"<td><code>", cell, "</code></td>"});
          break;
        case Table::Kind::number:
          text += join({"<td class=\"number\">", cell, "</td>"});
          break;
      }
    }
    text += "</tr>\n";
  }
  return text + "</tbody>\n</table></div>\n";
}

std::string markdown(const Table& table) {
  std::string text = "|";
  for (const Table::Column& column : table.columns) text += join({" ", column.title, " |"});
  text += "\n|";
  for (const Table::Column& column : table.columns) text += column.kind == Table::Kind::number ? "---:|" : "---|";
  text += "\n";
  for (const auto& row : table.rows) {
    text += "|";
    for (std::size_t i = 0; i < row.size(); ++i) {
      const bool is_name = table.columns[i].kind == Table::Kind::name;
      text += join({is_name ? " `" : " ", row[i], is_name ? "` |" : " |"});
    }
    text += "\n";
  }
  return text;
}

std::string html_of_all_outputs() {
  std::string text;
  for (const OutputGroup group : kGroups) {
    text += join(
        {"<h3>", html_text(title(group)), " (", std::to_string(count(group)), ")</h3>\n", html(output_table(group))});
  }
  return text;
}

/// What stands for a {{word}} of the page.
std::string replacement(std::string_view word) {
  if (word == "description") return html_text(TESSERA_DESCRIPTION);
  if (word == "version") return html_text(TESSERA_VERSION);
  if (word == "guid") return html_text(kGuid);
  if (word == "output_count") return std::to_string(kOutputCount);
  if (word == "input_count") return std::to_string(kInputCount);
  if (word == "state_count") return std::to_string(kStateCount);
  if (word == "last_output") return std::to_string(kOutputCount - 1);
  if (word == "first_parameter") return std::to_string(kFirstParameter);
  if (word == "last_parameter") return std::to_string(kTimeReference - 1);
  if (word == "last_gate") return std::to_string(kBooleanCount - 1);
  if (word == "time_reference") return std::to_string(kTimeReference);
  if (word == "scenario_end") return number(kScenarioEnd_s);
  if (word == "inputs") return html(input_table());
  if (word == "outputs") return html_of_all_outputs();
  if (word == "units") return html(unit_table());
  throw std::runtime_error(join({"the page template asks for {{", word, "}}, which is not known"}));
}

constexpr std::string_view kGenerated =
    "<!-- Generated from model/tables by the target `docs`: edit the tables. -->\n\n";

}  // namespace

std::string index_page(std::string_view page_template) {
  std::string page;
  while (true) {
    const std::size_t open = page_template.find("{{");
    page += page_template.substr(0, open);
    if (open == std::string_view::npos) return page;
    const std::size_t close = page_template.find("}}", open);
    if (close == std::string_view::npos) throw std::runtime_error("the page template has a {{ without its }}");
    page += replacement(page_template.substr(open + 2, close - open - 2));
    page_template.remove_prefix(close + 2);
  }
}

std::string variables_document() {
  std::string text = join(
      {"# Variables\n\n", kGenerated,
       "VR is the value reference, counted apart for Real and Boolean; there are no variables of other types.\n\n",
       "## Inputs (", std::to_string(kInputCount), ")\n\n",
       "Tunable parameters, each with a gate. While the gate is true, the model takes the parameter through the\n",
       "parameter's scale; while it is false (the start value), it takes its own source through the scale of that: a\n",
       "table over 0 to ", number(kScenarioEnd_s), " s, or the controller.\n\n", markdown(input_table()),
       "\nOutputs marked loop belong to the hydrogen loop, which magnifies roundings in stretches of the scenario;\n",
       "the documentation page tells how to compare results.\n"});
  for (const OutputGroup group : kGroups) {
    text += join(
        {"\n## Outputs: ", title(group), " (", std::to_string(count(group)), ")\n\n", markdown(output_table(group))});
  }
  text += join({"\n## Time\n\nReal ", std::to_string(kTimeReference), " is `time`, the FMU time in s.\n",
                "\n## Units\n\nA value in base units is factor × value + offset.\n\n", markdown(unit_table())});
  return text;
}

std::string states_document() {
  return join({"# States and memories\n\n", kGenerated, "## Continuous states (", std::to_string(kStateCount), ")\n\n",
               "x is the state, u what its integrator takes in. A state whose start is no number is set by its block\n",
               "in the first evaluation. An active state belongs to a sub-block that is switched on.\n\n",
               markdown(state_table()), "\n## Memories (", std::to_string(kMemories.size()), ")\n\n",
               "Written at the end of a major step on a tick of the rate, read at the next tick, held in between.\n\n",
               markdown(memory_table())});
}
