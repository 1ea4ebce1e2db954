// Labelling into memory that the library owns, and that grows with the contents of the image. Arguments are checked.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "daxi/blob_find.h"

namespace dax {

// Labels a mask into `*model`, or into a new model that is stored there where it is null. DAX_STS_NO_MEMORY writes
// nothing and leaves an existing model usable.
DaxStatus labelIntoModel(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                         DaxiBlobModel** model, const DaxiDomainList** domains);

// The same into a new model, whatever `*model` holds; the model keeps no scratch memory.
DaxStatus labelIntoNewModel(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                            DaxiBlobModel** model, const DaxiDomainList** domains);

// Frees a model, which may be null.
void destroyModel(DaxiBlobModel* model);

}  // namespace dax
