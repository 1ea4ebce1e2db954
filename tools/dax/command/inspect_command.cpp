#include <algorithm>
#include <iostream>
#include <memory>
#include <new>

#include "base/text.h"
#include "base/workers.h"
#include "command/commands.h"
#include "command/inspect_options.h"
#include "command/picture_options.h"
#include "dax/threadpool.h"
#include "draw/overlay.h"
#include "io/output_file.h"
#include "io/output_name.h"
#include "report/listing.h"
#include "report/report.h"

namespace dax::tool {
namespace {

void draw(const Job& job, const GreyImage& grey, const InspectOptions& options, Outcome& outcome) {
  const Inspection& inspection = outcome.inspection;
  if (!job.overlay.empty()) writeFile(job.overlay, drawOverlay(grey, inspection, options.overlayScale));
  if (!job.report.empty()) {
    writeFile(job.report, makeReport(outcome.file, grey, inspection, options.settings));
  }
}

void inspectFile(const Job& job, const InspectOptions& options, const Workers& workers, Outcome& outcome) {
  StageTimes& times = outcome.times;
  const InspectionSettings& settings = options.settings;
  const Picture picture = times.measure(Stage::kRead, [&] {
    return settings.byClass ? readClasses(job.input) : readPicture(job.input, settings.levels);
  });
  outcome.inspection = inspect(picture, settings, workers, times);
  times.measure(Stage::kDraw, [&] { draw(job, picture.grey, options, outcome); });
  outcome.inspection.contours.clear();
}

// Failures from any stage name the image.
Failure named(const std::string& file, ExitStatus status, const std::string& message) {
  const bool isNamed = status == ExitStatus::kCannotRead || status == ExitStatus::kCannotWrite;
  return {status, isNamed ? message : file + ": " + message};
}

Outcome inspectJob(const Job& job, const InspectOptions& options, const Workers& workers) {
  Outcome outcome{printable(job.input.string()), {}, {}, std::nullopt};
  try {
    inspectFile(job, options, workers, outcome);
  } catch (const Failure& failure) {
    outcome.failure = named(outcome.file, failure.status(), failure.what());
  } catch (const std::bad_alloc&) {
    outcome.failure = named(outcome.file, ExitStatus::kInternal, "out of memory");
  } catch (const std::exception& error) {
    outcome.failure = named(outcome.file, ExitStatus::kInternal, printable(error.what()));
  }
  if (outcome.failure) outcome.inspection = {};
  return outcome;
}

struct Batch {
  const std::vector<Job>& jobs;
  const InspectOptions& options;
  std::vector<Outcome> outcomes;
  Progress progress;

  static DaxStatus tile(void* context, uint32_t index, int32_t /*bound*/, uint32_t /*worker*/) {
    Batch& batch = *static_cast<Batch*>(context);
    batch.outcomes[index] = inspectJob(batch.jobs[index], batch.options, {});
    batch.progress.advance();
    return DAX_STS_OK;
  }
};

std::vector<Outcome> inspectAll(const std::vector<Job>& jobs, const InspectOptions& options) {
  const Pool pool(options.threads);
  const Workers workers = pool.workers();
  // With several images each thread takes whole images; with one image the threads share its blobs.
  if (jobs.size() == 1) {
    return {inspectJob(jobs.front(), options, workers)};
  }
  Batch batch{jobs, options, std::vector<Outcome>(jobs.size()), Progress(jobs.size(), "images")};
  DAX_THREADPOOL_Compute1DTiled(workers.pool, Batch::tile, &batch, static_cast<int32_t>(jobs.size()), 1);
  return std::move(batch.outcomes);
}

void write(const InspectOptions& options, const Listing& listing) {
  switch (options.format) {
    case ListingFormat::kTable:
      writeTable(std::cout, listing);
      break;
    case ListingFormat::kJson:
      writeJson(std::cout, listing);
      break;
    case ListingFormat::kCsv:
      writeCsv(std::cout, listing);
      break;
  }
  finishOutput();
  if (listing.truth && options.format == ListingFormat::kCsv) std::cerr << listing.truth->text();
  if (options.time) writeTimes(std::cerr, listing.outcomes);
}

// An index beside the reports of several pictures.
void writeIndex(const InspectOptions& options, const std::vector<Job>& jobs, const std::vector<Outcome>& outcomes) {
  if (options.report.empty() || !areSeveral(options.inputs)) return;
  std::vector<IndexEntry> entries;
  for (size_t i = 0; i < jobs.size(); ++i) {
    const Outcome& outcome = outcomes[i];
    const bool isRead = !outcome.failure;
    entries.push_back({outcome.file, isRead ? asLink(jobs[i].report.filename().string()) : "",
                       isRead ? summary(outcome.inspection, options.settings) : outcome.failure->what(),
                       isRead && outcome.inspection.met});
  }
  writeFile(options.report / "index.html", makeIndex(entries));
}

ExitStatus statusOf(const std::vector<Outcome>& outcomes) {
  if (outcomes.size() == 1 && outcomes.front().failure) return outcomes.front().failure->status();
  const bool failed = std::any_of(outcomes.begin(), outcomes.end(), [](const Outcome& o) { return !!o.failure; });
  if (failed) return ExitStatus::kSomeFailed;
  const bool met = std::all_of(outcomes.begin(), outcomes.end(), [](const Outcome& o) { return o.inspection.met; });
  return met ? ExitStatus::kOk : ExitStatus::kNotFound;
}

TruthComparison compareOutcome(const Outcome& outcome, const Truth& truth, const InspectOptions& options) {
  const DaxiSize size = outcome.inspection.size;
  const std::vector<Blob>& blobs = outcome.inspection.blobs;
  if (size.width != truth.width || size.height != truth.height) {
    throw Failure(ExitStatus::kTruthFailed, printable(options.truth.string()) + ": is the truth of an image of " +
                                                std::to_string(truth.width) + " x " + std::to_string(truth.height));
  }
  return compare(truth, std::vector<BlobInfo>(blobs.begin(), blobs.end()), options.tolerances);
}

ExitStatus run(InspectOptions options) {
  std::optional<Truth> truth;
  if (!options.truth.empty()) truth = readTruth(options.truth);
  if (truth && areSeveral(options.inputs)) {
    reject("--truth: takes one image, not several or a folder");
  }
  const std::vector<Job> jobs = planSafeJobs(options.inputs, options.overlay, options.report);
  for (const Job& job : jobs) requireOther("--overlay", job.overlay, {{"the mask", options.outsideMask}});
  if (!options.outsideMask.empty()) {
    options.settings.outsideMask = std::make_shared<const GreyImage>(readMask(options.outsideMask));
  }
  const std::vector<Outcome> outcomes = inspectAll(jobs, options);
  const ExitStatus status = statusOf(outcomes);
  writeIndex(options, jobs, outcomes);

  std::optional<TruthComparison> comparison;
  if (truth && status == ExitStatus::kOk) {
    comparison = compareOutcome(outcomes.front(), *truth, options);
  }
  write(options, {outcomes, options.settings, comparison ? &*comparison : nullptr});
  for (const Outcome& outcome : outcomes) {
    if (outcome.failure) report(*outcome.failure);
    if (!outcome.inspection.note.empty()) say(outcome.file, outcome.inspection.note);
  }
  return comparison && !comparison->agrees() ? ExitStatus::kTruthFailed : status;
}

Command addInspect(CLI::App& app) {
  CLI::App* inspect = app.add_subcommand("inspect", "Find, measure and select objects in images");
  auto commandLine = std::make_shared<InspectCommandLine>(*inspect);
  return {inspect, [commandLine] { return run(commandLine->finish()); }};
}

const CommandRegistration inspectRegistration("inspect", addInspect);

}  // namespace
}  // namespace dax::tool
