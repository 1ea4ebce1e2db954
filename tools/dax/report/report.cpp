#include "report/report.h"

#include <algorithm>
#include <sstream>
#include <string_view>

#include "base/run_info.h"
#include "base/text.h"
#include "io/image_file.h"
#include "report/listing.h"
#include "report/report_page.h"

namespace dax::tool {
namespace {

// From this number of blobs on, only the marked blob shows its number, so that the picture stays visible.
constexpr size_t kMany = 300;

std::string base64(std::string_view bytes) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string result;
  result.reserve((bytes.size() + 2) / 3 * 4);
  for (size_t i = 0; i < bytes.size(); i += 3) {
    const size_t n = std::min<size_t>(3, bytes.size() - i);
    uint32_t group = 0;
    for (size_t k = 0; k < 3; ++k) group = group << 8 | (k < n ? static_cast<unsigned char>(bytes[i + k]) : 0);
    for (size_t k = 0; k < 4; ++k) result += k <= n ? kDigits[group >> (18 - 6 * k) & 63] : '=';
  }
  return result;
}

void writePath(std::ostream& out, const Contour& contour) {
  char separator = 'M';
  for (const Point& point : contour) {
    out << separator << shortest(point.x) << ' ' << shortest(point.y);
    separator = ' ';
  }
  out << 'Z';
}

void writeBox(std::ostream& out, const Blob& blob) {
  const auto number = [](float value) { return fixed(value, 2); };
  // Half a pixel more each way: the box holds pixel centres, the picture shows whole pixels.
  out << "<rect class=\"box\" x=\"" << number(-blob.boxWidth / 2 - 0.5F) << "\" y=\""
      << number(-blob.boxHeight / 2 - 0.5F) << "\" width=\"" << number(blob.boxWidth + 1) << "\" height=\""
      << number(blob.boxHeight + 1) << "\" transform=\"translate(" << number(blob.boxX) << ' ' << number(blob.boxY)
      << ") rotate(" << number(degrees(blob.boxAngle)) << ")\"/>";
}

void writeBlob(std::ostream& out, size_t number, const Blob& blob, const Contour& contour) {
  out << "<g class=\"blob\">";
  writeBox(out, blob);
  for (const char* style : {"halo", "contour"}) {
    out << "<path class=\"" << style << "\" d=\"";
    writePath(out, contour);
    out << "\"/>";
  }
  out << "<text x=\"" << fixed(blob.boxX, 1) << "\" y=\"" << fixed(blob.boxY, 1) << "\">" << number << "</text></g>\n";
}

void writePicture(std::ostream& out, const GreyImage& image, const Inspection& inspection) {
  const auto [width, height] = image.size;
  out << "<svg class=\"picture" << (inspection.blobs.size() > kMany ? " many" : "") << "\" viewBox=\"-0.5 -0.5 "
      << width << ' ' << height << "\" role=\"img\" aria-label=\"The picture with its objects outlined\" font-size=\""
      << std::max(4, std::max(width, height) / 50) << "\">\n<image x=\"-0.5\" y=\"-0.5\" width=\"" << width
      << "\" height=\"" << height << "\" href=\"data:image/png;base64," << base64(encodePng(image)) << "\"/>\n";
  for (size_t i = 0; i < inspection.blobs.size(); ++i) {
    writeBlob(out, i + 1, inspection.blobs[i], inspection.contours[i]);
  }
  out << "</svg>\n";
}

void writeTable(std::ostream& out, const char* style, bool isFocusable, const std::vector<Fields>& lines) {
  out << "<table" << style << ">\n<thead><tr>";
  for (const std::string& title : lines.front()) out << "<th scope=\"col\">" << title << "</th>";
  out << "</tr></thead>\n<tbody>\n";
  for (size_t i = 1; i < lines.size(); ++i) {
    out << (!isFocusable ? "<tr>" : i == 1 ? "<tr tabindex=\"0\">" : "<tr tabindex=\"-1\">");
    for (const std::string& field : lines[i]) out << "<td>" << escapeHtml(field) << "</td>";
    out << "</tr>\n";
  }
  out << "</tbody>\n</table>\n";
}

void writeTables(std::ostream& out, const Inspection& inspection, const InspectionSettings& settings) {
  if (inspection.blobs.empty()) {
    out << "<p class=\"none\">No objects.</p>\n";
  } else {
    writeTable(out, "", true, blobTable(inspection, settings));
  }
  if (!inspection.rejected.empty()) writeTable(out, " class=\"rejected\"", false, rejectedTable(inspection, settings));
}

// What was done, with what and when.
void writeRun(std::ostream& out, const Inspection* inspection, const InspectionSettings* settings) {
  const RunInfo& info = runInfo();
  out << "<footer><p>DAX " << escapeHtml(info.version) << ", " << info.date;
  if (settings) out << "; lengths in " << (settings->mmPerPixel ? "millimetres" : "pixels") << ", angles in degrees";
  out << "</p>\n<p><code>" << escapeHtml(info.command) << "</code></p>\n";
  if (inspection && !inspection->note.empty()) out << "<p>" << escapeHtml(inspection->note) << "</p>\n";
  out << "</footer>\n";
}

void writeHead(std::ostream& out, const std::string& title) {
  out << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
         "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src data:; "
         "style-src 'unsafe-inline'; script-src 'unsafe-inline'\">\n<title>"
      << title << "</title>\n<style>" << kReportStyle << "</style>\n</head>\n";
}

}  // namespace

std::string makeReport(const std::string& file, const GreyImage& image, const Inspection& inspection,
                       const InspectionSettings& settings) {
  const std::string name = escapeHtml(file);
  std::ostringstream out;
  writeHead(out, name);
  out << "<body>\n<header>\n<h1>" << name << "</h1>\n<p>" << escapeHtml(summary(inspection, settings))
      << "</p>\n</header>\n<main>\n<figure>\n";
  writePicture(out, image, inspection);
  out << "</figure>\n<div class=\"table\">\n";
  writeTables(out, inspection, settings);
  out << "</div>\n</main>\n";
  writeRun(out, &inspection, &settings);
  out << "<script>" << kReportScript << "</script>\n</body>\n</html>\n";
  return out.str();
}

std::string makeIndex(const std::vector<IndexEntry>& entries) {
  std::ostringstream out;
  writeHead(out, "Reports");
  out << "<body>\n<header>\n<h1>Reports</h1>\n<p>" << entries.size() << " pictures</p>\n</header>\n"
      << "<table class=\"index\">\n<thead><tr><th>picture</th><th>result</th></tr></thead>\n";
  for (const IndexEntry& entry : entries) {
    const std::string name = escapeHtml(entry.name);
    out << "<tr" << (entry.isGood ? "" : " class=\"bad\"") << "><td>";
    if (entry.link.empty()) {
      out << name;
    } else {
      out << "<a href=\"" << escapeHtml(entry.link) << "\">" << name << "</a>";
    }
    out << "</td><td>" << escapeHtml(entry.summary) << "</td></tr>\n";
  }
  out << "</table>\n";
  writeRun(out, nullptr, nullptr);
  out << "</body>\n</html>\n";
  return out.str();
}

}  // namespace dax::tool
