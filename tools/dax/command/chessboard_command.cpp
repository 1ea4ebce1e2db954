#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <new>
#include <nlohmann/json.hpp>

#include "base/columns.h"
#include "base/text.h"
#include "base/workers.h"
#include "command/commands.h"
#include "command/picture_options.h"
#include "io/output_file.h"
#include "model/boards.h"
#include "report/run_json.h"

namespace dax::tool {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kMinCorners = 2, kMaxCorners = 25;

struct ChessboardOptions {
  std::vector<std::string> inputs;
  std::string size;
  bool anySize = false;
  bool json = false;
  std::string overlay;
  std::optional<Levels> levels;
};

// The result for one image.
struct Result {
  std::string file;  // printable
  DaxiSize size{};
  std::optional<Board> board;
  std::optional<Failure> failure;
  std::string note;
};

std::optional<ChessboardPatternSize> sizeOf(const ChessboardOptions& options) {
  if (options.anySize == !options.size.empty()) {
    reject("chessboard: takes one of --size and --auto");
  }
  if (options.anySize) return std::nullopt;
  const auto sides = parseIntegerPair(options.size, 'x', kMinCorners, kMaxCorners);
  if (!sides) reject("--size: " + inQuotes(options.size) + " is not COLUMNSxROWS, each 2 to 25");
  return ChessboardPatternSize{sides->first, sides->second};
}

void search(const Job& job, const ChessboardOptions& options, const std::optional<ChessboardPatternSize>& size,
            Result& result) {
  const Picture picture = readPicture(job.input, options.levels);
  const GreyImage& image = picture.grey;
  result.size = image.size;
  result.note = picture.note();
  result.board = findBoard(image, size);
  if (!job.overlay.empty()) writeFile(job.overlay, drawBoard(image, result.board));
}

Result searchJob(const Job& job, const ChessboardOptions& options, const std::optional<ChessboardPatternSize>& size) {
  Result result{printable(job.input.string()), {}, std::nullopt, std::nullopt, {}};
  try {
    search(job, options, size, result);
  } catch (const Failure& failure) {
    const bool isNamed = failure.status() == ExitStatus::kCannotRead || failure.status() == ExitStatus::kCannotWrite;
    result.failure = {failure.status(), isNamed ? failure.what() : result.file + ": " + failure.what()};
  } catch (const std::bad_alloc&) {
    result.failure = {ExitStatus::kInternal, result.file + ": out of memory"};
  } catch (const std::exception& error) {
    result.failure = {ExitStatus::kInternal, result.file + ": " + printable(error.what())};
  }
  return result;
}

Json toJson(const Result& result) {
  Json json{{"file", result.file}};
  if (result.failure) {
    json["error"] = result.failure->what();
    return json;
  }
  json["width"] = result.size.width;
  json["height"] = result.size.height;
  if (!result.note.empty()) json["note"] = result.note;
  json["found"] = result.board.has_value();
  if (!result.board) return json;
  json["columns"] = result.board->pattern.columns;
  json["rows"] = result.board->pattern.rows;
  json["detector"] = result.board->detector;
  json["ambiguous"] = result.board->ambiguous;
  json["refined"] = result.board->refined;
  json["corners"] = Json::array();
  for (const DaxiPoint32f& p : result.board->corners) json["corners"].push_back({decimal(p.x), decimal(p.y)});
  return json;
}

void writeBoardsJson(std::ostream& out, const std::vector<Result>& results) {
  Json json = runJson();
  json["images"] = Json::array();
  for (const Result& result : results) json["images"].push_back(toJson(result));
  out << json.dump(2) << '\n';
}

std::string place(DaxiPoint32f p) {
  return fixed(static_cast<double>(p.x), 2) + ", " + fixed(static_cast<double>(p.y), 2);
}

void writeBoardsTable(std::ostream& out, const std::vector<Result>& results) {
  std::vector<Fields> lines{
      {"image", "size", "board", "detector", "first corner", "last corner", "first is", "unrefined"}};
  size_t found = 0;
  for (const Result& result : results) {
    if (result.failure) continue;
    const std::string size = std::to_string(result.size.width) + " x " + std::to_string(result.size.height);
    if (const auto& board = result.board) {
      ++found;
      lines.push_back({result.file, size,
                       std::to_string(board->pattern.columns) + " x " + std::to_string(board->pattern.rows),
                       board->detector, place(board->corners.front()), place(board->corners.back()),
                       board->ambiguous ? "ambiguous" : "beside dark",
                       std::to_string(std::count(board->refined.begin(), board->refined.end(), false))});
    } else {
      lines.push_back({result.file, size, "none", "", "", "", "", ""});
    }
  }
  if (lines.size() > 1) writeColumns(out, lines);
  out << found << (found == 1 ? " board in " : " boards in ") << results.size()
      << (results.size() == 1 ? " image\n" : " images\n");
}

ExitStatus run(const ChessboardOptions& options) {
  const auto size = sizeOf(options);
  const std::vector<Job> jobs = planSafeJobs(options.inputs, options.overlay, {});
  std::vector<Result> results;
  {
    Progress progress(jobs.size(), "images");
    for (const Job& job : jobs) {
      results.push_back(searchJob(job, options, size));
      progress.advance();
    }
  }
  (options.json ? writeBoardsJson : writeBoardsTable)(std::cout, results);
  finishOutput();
  for (const Result& result : results) {
    if (result.failure) report(*result.failure);
    if (!result.note.empty()) say(result.file, result.note);
  }
  if (results.size() == 1 && results.front().failure) return results.front().failure->status();
  const bool failed = std::any_of(results.begin(), results.end(), [](const Result& r) { return !!r.failure; });
  if (failed) return ExitStatus::kSomeFailed;
  const bool isFound = std::all_of(results.begin(), results.end(), [](const Result& r) { return r.board.has_value(); });
  return isFound ? ExitStatus::kOk : ExitStatus::kNotFound;
}

Command addChessboard(CLI::App& app) {
  CLI::App* command = app.add_subcommand("chessboard", "Find the corners of chessboards to parts of a pixel");
  auto options = std::make_shared<ChessboardOptions>();
  command
      ->add_option("IMAGE", options->inputs,
                   "images (PNG, JPEG, TIFF, BMP, PGM, PPM), or folders of them,\n"
                   "taken as 8-bit grey")
      ->required()
      ->type_name("");
  command
      ->add_option("--size", options->size,
                   "the board has so many inner corners in a row and in a\n"
                   "column, each 2 to 25")
      ->type_name("COLUMNSxROWS");
  command->add_flag("--auto", options->anySize,
                    "any board of 3 x 3 inner corners or more, the largest one; rows\nare its shorter side");
  addLevels(*command, options->levels, "OPTIONS");
  command->add_flag("--json", options->json, "JSON instead of a table, with all corners, row by row");
  command
      ->add_option("--overlay", options->overlay,
                   "also draw the corners in their order, .png; of several images\n"
                   "a folder, which is made where it is missing")
      ->type_name("PICTURE");
  command->footer(
      "The order of corners follows the colours of the board where they tell its ends apart, with an\n"
      "odd sum of columns and rows: the first corner is beside a dark square of the board's corner.\n"
      "Else the first row is the one nearest the top, and the board is called ambiguous: a turned\n"
      "picture of it may be read from the other end. Corners that could not be refined are counted,\n"
      "and flagged in the JSON. The last line counts the boards.\n"
      "Examples:\n"
      "  dax chessboard left/ --size 9x6 --json > corners.json\n"
      "  dax chessboard board.jpg --auto --overlay order.png\n\n" +
      std::string(kExitStatusHelp));
  return {command, [options] { return run(*options); }};
}

const CommandRegistration chessboardRegistration("chessboard", addChessboard);

}  // namespace
}  // namespace dax::tool
