// The labelling worker and the memory that it works in.
#pragma once

#include "daxi/blob_find.h"
#include "frame/work_buffer.h"

namespace dax {

// The model: the result of a labelling, sized for the worst image.
struct FindModel {
  FindModel(DaxiSize size, int32_t connectivity);
  BufferLayout layout;
  BufferPiece<DaxiDomainList> list;
  BufferPiece<DomainRun> runs;
  BufferPiece<DaxiDomain> domains;
};

// The work buffer: label equivalences.
struct FindScratch {
  FindScratch(DaxiSize size, int32_t connectivity);
  BufferLayout layout;
  BufferPiece<uint32_t> parents;
};

}  // namespace dax

// Labels a mask of sides up to 65536 into `model` and returns the list at its start.
extern "C" const DaxiDomainList* _DAXI_FindDomain_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                         int32_t connectivity, void* model, void* buffer, int32_t isa);
