// The labelling workers and their memory.
#pragma once

#include "daxi/blob_find.h"
#include "frame/memory/work_buffer.h"

namespace dax {

// Numbers of records that the worst image of a size needs.
struct FindNeed {
  uint64_t runs;
  uint64_t labels;
  uint64_t domains;
};

FindNeed maskNeed(DaxiSize size, int32_t connectivity);
FindNeed classNeed(DaxiSize size);

// Layout of the model, which holds the result of a labelling.
struct FindModel {
  explicit FindModel(const FindNeed& need);
  BufferLayout layout;
  BufferPiece<DaxiDomainList> list;
  BufferPiece<DomainRun> runs;
  BufferPiece<DaxiDomain> domains;
};

// Layout of the work buffer: label equivalences.
struct FindScratch {
  explicit FindScratch(const FindNeed& need);
  BufferLayout layout;
  BufferPiece<uint32_t> parents;
};

// Labels an image of classes; arguments as _DAXI_FindDomain_8u_C1R.
const DaxiDomainList* findClassDomains(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                       void* model, void* buffer, int32_t isa);

}  // namespace dax

// Labels a mask with sides up to 65536 into `model`; returns the list at the start of the model.
extern "C" const DaxiDomainList* _DAXI_FindDomain_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                         int32_t connectivity, void* model, void* buffer, int32_t isa);
