// The report as a self-contained HTML file.
#include <array>
#include <cstdint>
#include <cstdio>

#include "tests/kit/report.h"

namespace kit {
namespace {

constexpr char Style[] = R"(
body { font: 15px/1.5 "Segoe UI", Tahoma, sans-serif; color: #222; background: #fff;
       max-width: 62em; margin: 0 auto; padding: 1em 1.5em 3em; }
h1 { font-size: 1.7em; margin-bottom: 0.3em; }
h2 { font-size: 1.25em; margin-top: 2em; border-bottom: 1px solid #ccc; }
h3 { font-size: 1em; margin-bottom: 0.3em; }
table { border-collapse: collapse; }
th, td { text-align: left; vertical-align: top; padding: 0.15em 1.2em 0.15em 0; }
td.number, th.number { text-align: right; }
pre { background: #f4f4f4; padding: 0.6em; white-space: pre-wrap; word-wrap: break-word; margin: 0; }
.verdict { font-size: 1.15em; padding: 0.7em 1em; border-left: 0.4em solid; }
.good { background: #e6f4e6; border-color: #2d8a2d; }
.bad { background: #fae3e3; border-color: #b33030; }
.failed { color: #b01818; font-weight: bold; }
.skipped { color: #666; }
.points label { display: block; margin: 0.6em 0; padding-left: 1.8em; text-indent: -1.8em; }
.points input { width: 1.2em; margin: 0 0.6em 0 0; }
textarea { width: 100%; box-sizing: border-box; height: 7em; font: inherit; }
button { font: inherit; padding: 0.3em 1em; margin-top: 0.7em; }
img { max-width: 100%; border: 1px solid #999; }
)";

// Ticks and remarks are written into the page, and the page is saved to a file that the user
// chooses; nothing is sent. The last branch is for Internet Explorer.
constexpr char Script[] = R"(
function saveReport() {
  var boxes = document.querySelectorAll('input[type=checkbox]');
  for (var i = 0; i < boxes.length; ++i) {
    if (boxes[i].checked) boxes[i].setAttribute('checked', '');
    else boxes[i].removeAttribute('checked');
  }
  var remarks = document.getElementById('remarks');
  remarks.textContent = remarks.value;
  var page = '<!DOCTYPE html>\n' + document.documentElement.outerHTML;
  var file = new Blob([page], { type: 'text/html' });
  if (window.navigator.msSaveOrOpenBlob) {
    window.navigator.msSaveOrOpenBlob(file, 'report.html');
    return;
  }
  var link = document.createElement('a');
  link.href = URL.createObjectURL(file);
  link.download = 'report.html';
  document.body.appendChild(link);
  link.click();
  document.body.removeChild(link);
}
)";

std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char unit : text) {
    switch (unit) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        // Control characters are not allowed in HTML.
        escaped +=
            static_cast<unsigned char>(unit) < 0x20 && unit != '\n' && unit != '\t' ? '?' : unit;
    }
  }
  return escaped;
}

std::string Base64(const std::string& bytes) {
  constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (size_t i = 0; i < bytes.size(); i += 3) {
    const size_t count = bytes.size() - i < 3 ? bytes.size() - i : 3;
    uint32_t group = 0;
    for (size_t j = 0; j < 3; ++j) {
      group = group << 8 | (j < count ? static_cast<unsigned char>(bytes[i + j]) : 0u);
    }
    for (size_t j = 0; j < 4; ++j) {
      text += j <= count ? digits[group >> (18 - 6 * j) & 63] : '=';
    }
  }
  return text;
}

std::string Decimal(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", value);
  return text;
}

std::string Cell(const std::string& text) { return "<td>" + Escaped(text) + "</td>"; }
std::string NumberCell(const std::string& text) {
  return "<td class=\"number\">" + Escaped(text) + "</td>";
}

std::string ComputerTable(const Report& report) {
  std::string html = "<h2>This computer</h2>\n<table>\n";
  for (const Property& property : report.computer) {
    html += "<tr>" + Cell(property.name) + Cell(property.value) + "</tr>\n";
  }
  return html + "</table>\n";
}

std::string ProgramTable(const Report& report) {
  std::string html =
      "<h2>Test programs</h2>\n<table>\n<tr><th></th><th class=\"number\">passed</th>"
      "<th class=\"number\">failed</th><th class=\"number\">skipped</th>"
      "<th class=\"number\">seconds</th><th></th></tr>\n";
  for (const ProgramReport& program : report.programs) {
    const Counts own = CountResults({.programs = {program}});
    html += "<tr>" + Cell(program.title) + NumberCell(std::to_string(own.passed)) +
            (own.failed > 0 ? "<td class=\"number failed\">" + std::to_string(own.failed) + "</td>"
                            : NumberCell("0")) +
            NumberCell(std::to_string(own.skipped)) + NumberCell(std::to_string(program.seconds)) +
            "<td class=\"failed\">" + Escaped(program.problem) + "</td></tr>\n";
  }
  return html + "</table>\n";
}

std::string Failures(const Report& report) {
  std::string html;
  for (const ProgramReport& program : report.programs) {
    for (const TestResult& result : program.results) {
      if (result.status != TestStatus::Failed) continue;
      html += "<h3>" + Escaped(program.title + ": " + result.name) + "</h3>\n<pre>" +
              Escaped(result.detail) + "</pre>\n";
    }
  }
  return html.empty() ? html : "<h2>Tests that failed</h2>\n" + html;
}

std::string Skipped(const Report& report) {
  std::string html;
  for (const ProgramReport& program : report.programs) {
    for (const TestResult& result : program.results) {
      if (result.status != TestStatus::Skipped) continue;
      html += "<tr>" + Cell(program.title) + Cell(result.name) + Cell(result.detail) + "</tr>\n";
    }
  }
  if (html.empty()) return html;
  return "<h2>Skipped tests</h2>\n<table>\n" + html + "</table>\n";
}

std::string Figures(const Report& report) {
  std::string html;
  for (const ProgramReport& program : report.programs) {
    for (const Figure& figure : program.figures) {
      html += "<tr>" + Cell(program.title) + Cell(figure.name) + Cell(figure.value) + "</tr>\n";
    }
  }
  if (html.empty()) return html;
  return "<h2>Measured by tests</h2>\n<table>\n" + html + "</table>\n";
}

std::string SpeedTable(const Report& report) {
  if (report.speed.empty()) return {};
  std::string html =
      "<h2>Speed compared with Windows' own tools</h2>\n<table>\n<tr><th></th><th>compared "
      "with</th>"
      "<th class=\"number\">ours, s</th><th class=\"number\">theirs, s</th>"
      "<th class=\"number\">ratio</th></tr>\n";
  for (const SpeedRow& row : report.speed) {
    html += "<tr>" + Cell(row.work) + Cell(row.other);
    if (row.problem.empty()) {
      html += NumberCell(Decimal(row.ours)) + NumberCell(Decimal(row.theirs)) +
              NumberCell(Decimal(row.ours / row.theirs));
    } else {
      html += "<td colspan=\"3\" class=\"skipped\">skipped: " + Escaped(row.problem) + "</td>";
    }
    html += "</tr>\n";
  }
  return html + "</table>\n";
}

std::string Points(const std::string& mailbox) {
  std::string html =
      "<h2>For you to look at</h2>\n<p>No program can judge these. Tick what you have tried and "
      "found correct, and note below what was wrong. Leave the rest.</p>\n<div class=\"points\">\n";
  for (const std::string& point : PointsForAPerson()) {
    html += "<label><input type=\"checkbox\">" + Escaped(point) + "</label>\n";
  }
  return html +
         "<p><textarea id=\"remarks\" placeholder=\"Your remarks\"></textarea>\n<br>"
         "<button onclick=\"saveReport()\">Save the report with your ticks and remarks</button>"
         "</p>\n</div>\n<p>Then please send the file to " +
         Escaped(mailbox) + ". The pictures are in it.</p>\n";
}

std::string Pictures(const Report& report) {
  if (report.pictures.empty()) return {};
  std::string html = "<h2>Pictures</h2>\n";
  for (const Picture& picture : report.pictures) {
    html += "<h3>" + Escaped(picture.title) + "</h3>\n<img alt=\"" + Escaped(picture.title) +
            "\" src=\"data:image/png;base64," + Base64(picture.png) + "\">\n";
  }
  return html;
}

std::string EachTest(const Report& report) {
  std::string html = "<h2>Each test</h2>\n";
  for (const ProgramReport& program : report.programs) {
    html += "<details><summary>" + Escaped(program.title) + "</summary>\n<table>\n";
    for (const TestResult& result : program.results) {
      const char* const status = result.status == TestStatus::Passed ? "<td>passed</td>"
                                 : result.status == TestStatus::Failed
                                     ? "<td class=\"failed\">failed</td>"
                                     : "<td class=\"skipped\">skipped</td>";
      html += "<tr>" + (status + NumberCell(std::to_string(result.milliseconds) + " ms")) +
              Cell(result.name) + "</tr>\n";
    }
    html += "</table></details>\n";
  }
  return html;
}

}  // namespace

std::string HtmlReport(const Report& report, const std::string& mailbox) {
  const std::string title = Escaped("Sumwright " + report.version + " on this computer");
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" + title +
         "</title>\n<style>" + Style + "</style>\n<script>" + Script +
         "</script>\n</head>\n<body>\n" + "<h1>" + title + "</h1>\n<p class=\"verdict " +
         (IsGood(report) ? "good" : "bad") + "\">" + Escaped(Verdict(report)) + "</p>\n<p>" +
         Escaped(report.restored) + " Started " + Escaped(report.started) + ", took " +
         std::to_string(report.seconds) + " s.</p>\n" + Points(mailbox) + ComputerTable(report) +
         ProgramTable(report) + Failures(report) + Skipped(report) + Figures(report) +
         SpeedTable(report) + Pictures(report) + EachTest(report) + "</body>\n</html>\n";
}

}  // namespace kit
