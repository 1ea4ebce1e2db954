#include "measure/blob/blob_passes.h"

#include "measure/blob/blob_rank.h"
#include "measure/blob/blob_score.h"

namespace dax {

void finishSelect(const SelectCall& call, const SelectScratch& at, KeptBlobs& kept) {
  sortKept(*call.cfg, kept, at.order.in(call.buffer), *at.candidate.in(call.buffer));
  DAXI_BlobSelect_blob_score_calculator(call.cfg, &call.rules, &kept);
  call.result->count = static_cast<uint32_t>(kept.count);
  call.result->domains = call.domains;
}

void select(const SelectCall& call) {
  const SelectScratch at(call.size);
  const SelectContext context = makeContext(call, at.features, call.buffer);
  context.bitmap.clear(call.size);
  Cascade cascade;
  DAXI_BlobSelect_create_cascade_filter(call.cfg, &call.rules, &cascade);

  KeptBlobs kept{call.result->array, 0};
  const int32_t next = DAXI_BlobSelect_1(&context, &cascade, call.domainCount, &kept);
  if (call.cfg->flags != 0 && next < call.domainCount) {
    DAXI_BlobSelect_2(&context, &cascade, next, call.domainCount, &kept, at.order.in(call.buffer),
                      at.candidate.in(call.buffer));
  }
  DAXI_BlobSelect_blob_info_calculator(&context, cascade.done, &kept);
  finishSelect(call, at, kept);
}

}  // namespace dax

int32_t DAXI_BlobSelect_1(const dax::SelectContext* context, const dax::Cascade* cascade, int32_t domainCount,
                          dax::KeptBlobs* kept) {
  int32_t label = 0;
  while (label < domainCount && kept->count < context->cfg.maxCount) {
    BlobInfo& blob = kept->array[kept->count];
    dax::calculateBasicFeatures(*context, context->domains.domains[label++], blob);
    if (cascade->accepts(*context, blob)) ++kept->count;
  }
  return label;
}

void DAXI_BlobSelect_2(const dax::SelectContext* context, const dax::Cascade* cascade, int32_t next,
                       int32_t domainCount, dax::KeptBlobs* kept, BlobInfo** order, BlobInfo* candidate) {
  dax::KeptHeap heap(*kept, dax::keepRanking(context->cfg), order);
  *candidate = {};
  for (int32_t label = next; label < domainCount; ++label) {
    dax::calculateBasicFeatures(*context, context->domains.domains[label], *candidate);
    if (cascade->accepts(*context, *candidate)) heap.offer(*candidate);
  }
}

void DAXI_BlobSelect_blob_info_calculator(const dax::SelectContext* context, uint32_t done, dax::KeptBlobs* kept) {
  if (context->rules.basicOnly) return;
  for (int32_t i = 0; i < kept->count; ++i) dax::completeFeatures(*context, done, kept->array[i]);
}
