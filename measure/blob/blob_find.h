// The labelling workers and the memory that they work in.
#pragma once

#include "daxi/blob_find.h"
#include "frame/memory/work_buffer.h"

namespace dax {

// What the worst image of a size needs.
struct FindNeed {
  uint64_t runs;
  uint64_t labels;
  uint64_t domains;
};

FindNeed maskNeed(DaxiSize size, int32_t connectivity);
FindNeed classNeed(DaxiSize size);

// The model: the result of a labelling.
struct FindModel {
  explicit FindModel(const FindNeed& need);
  BufferLayout layout;
  BufferPiece<DaxiDomainList> list;
  BufferPiece<DomainRun> runs;
  BufferPiece<DaxiDomain> domains;
};

// The work buffer: label equivalences.
struct FindScratch {
  explicit FindScratch(const FindNeed& need);
  BufferLayout layout;
  BufferPiece<uint32_t> parents;
};

// Labels an image of classes, as below.
const DaxiDomainList* findClassDomains(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                       void* model, void* buffer, int32_t isa);

}  // namespace dax

// Labels a mask of sides up to 65536 into `model` and returns the list at its start.
extern "C" const DaxiDomainList* _DAXI_FindDomain_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                         int32_t connectivity, void* model, void* buffer, int32_t isa);
