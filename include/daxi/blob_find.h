/* Blob labelling: the connected regions (domains) of a mask, as chains of runs.
 *
 * Any non-zero pixel is foreground. Domains are numbered from 0 in raster order of their first pixel. The result is in
 * the caller's model memory and refers to nothing else: the mask and the work buffer may be freed after the call. The
 * sequence is: query both sizes, allocate, call DAXI_BlobFind, then read the list or pass it to blob selection. */
#ifndef DAXI_BLOB_FIND_H
#define DAXI_BLOB_FIND_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Ends a chain of runs. */
#define DAXI_RUN_END 0xFFFFFFFFu

/* Maximum image side, a limit of the run fields. */
#define DAXI_BLOB_MAX_SIDE 65536

/* A horizontal run of foreground pixels. 16 bytes. */
typedef struct DomainRun {
  uint16_t row;
  uint16_t start; /* first column */
  uint16_t end;   /* last column, inclusive */
  uint16_t cls;   /* class of the run; 0 from labelling without classes */
  uint32_t label; /* label of the domain */
  uint32_t next;  /* index in the run array of the domain's next run; DAXI_RUN_END ends the chain */
} DomainRun;

/* A domain: its first run; `next` links the others in raster order. */
typedef struct DaxiDomain {
  DomainRun head;
  uint32_t last;     /* index in the run array of the domain's last run */
  uint32_t runCount; /* runs of the domain, the head included */
} DaxiDomain;

/* The result of a labelling. `runs` holds all runs of the image in raster order, heads included. */
typedef struct DaxiDomainList {
  const DomainRun* runs;
  const DaxiDomain* domains; /* by label */
  uint32_t runCount;
  uint32_t domainCount;
  DaxiSize size; /* of the labelled image */
} DaxiDomainList;

/* Bytes of model memory for the worst image of this size: ceil(w / 2) runs per row, and the maximum number of domains.
 * `connectivity` as in DAXI_BlobFind_8u_C1R.
 *
 * Checks, in order: bytes null -> 0x10000014; width or height outside 1..65536 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_BlobFindModelSize_8u(DaxiSize size, int32_t connectivity, uint64_t* bytes);

/* Bytes of work buffer: a table of label equivalences. Checks as DAXI_BlobFindModelSize_8u. Thread-safe. */
DAX_API DaxStatus DAXI_BlobFindBufferSize_8u(DaxiSize size, int32_t connectivity, uint64_t* bytes);

/* Labels a mask.
 *
 *   src, srcStep   mask and its row step in bytes
 *   size           region, sides 1..65536
 *   connectivity   4: neighbours share an edge; any other value: edge or corner (8)
 *   model          memory for the result, at least DAXI_BlobFindModelSize_8u bytes, aligned as by malloc
 *   domains        receives the result, which lies inside model
 *   buffer         work buffer, at least DAXI_BlobFindBufferSize_8u bytes, aligned as by malloc
 *
 * Checks, in order: a null pointer -> 0x10000014; a side outside 1..65536 -> 0x1000001a; srcStep < width -> 0x1000001b.
 * A failed call writes nothing. A call touches only as much of the model as the image has runs and domains. Thread-safe
 * for distinct memory. */
DAX_API DaxStatus DAXI_BlobFind_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                       void* model, const DaxiDomainList** domains, void* buffer);

/* The same with a pointer to non-const, for hosts that pass their own buffer; the image is not changed. The _IS form
 * takes an instruction-set code; checked last: isa < 0 -> 0x1000001c. */
DAX_API DaxStatus DAXI_BlobFind_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity, void* model,
                                        const DaxiDomainList** domains, void* buffer);
DAX_API DaxStatus DAXI_BlobFind_8u_C1IR_IS(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                           void* model, const DaxiDomainList** domains, void* buffer, int32_t isa);

/* Sizes for labelling by class, where every pixel can be a domain of its own. Checks as DAXI_BlobFindModelSize_8u; checked
 * last: width * height above 2^32 - 2, the limit of run indices -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_BlobFindMultiClsModelSize_8u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_BlobFindMultiClsBufferSize_8u(DaxiSize size, uint64_t* bytes);

/* Labels an image of classes: the value of a pixel is its class, 0 is background. A run ends where the value changes,
 * only runs of the same class are joined, and every run stores its class. Arguments and checks as DAXI_BlobFind_8u_C1R,
 * with memory of the MultiCls sizes; checked last: width * height above 2^32 - 2 -> 0x1000001a; _IS: isa < 0 ->
 * 0x1000001c. Forms as above. */
DAX_API DaxStatus DAXI_BlobFindMultiCls_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                               void* model, const DaxiDomainList** domains, void* buffer);
DAX_API DaxStatus DAXI_BlobFindMultiCls_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                                void* model, const DaxiDomainList** domains, void* buffer);
DAX_API DaxStatus DAXI_BlobFindMultiCls_8u_C1IR_IS(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                                   void* model, const DaxiDomainList** domains, void* buffer,
                                                   int32_t isa);

/* Memory of a labelling, owned by the library. Its size depends on the contents of the image, not on the worst case. */
typedef struct DaxiBlobModel DaxiBlobModel;

/* Labels a mask into a new model, which overwrites `*model`. Release it with DAXI_BlobFindV2DestroyModel_8u. The list
 * is valid as long as the model.
 *
 * Checks, in order: a null pointer -> 0x10000014; a side outside 1..65536 -> 0x1000001a; step < width -> 0x1000001b; no
 * memory -> 0x1000002b. A failed call writes nothing and leaks no memory. Thread-safe. */
DAX_API DaxStatus DAXI_BlobFindV2_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                         DaxiBlobModel** model, const DaxiDomainList** domains);
DAX_API DaxStatus DAXI_BlobFindV2_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                          DaxiBlobModel** model, const DaxiDomainList** domains);

/* Labels a mask into a model that is reused: `*model` is null for the first call, which creates the model. Over a
 * stream of images memory grows only when an image needs more than all before. The list of the previous call becomes
 * invalid. Checks as the second version; after a failure the model can still be used. Thread-safe for distinct
 * models. */
DAX_API DaxStatus DAXI_BlobFindV3_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                          DaxiBlobModel** model, const DaxiDomainList** domains);

/* Releases a model and sets `*model` to null. A null `*model` is ignored, so that a second release does no harm. model
 * null -> 0x10000014. */
DAX_API DaxStatus DAXI_BlobFindV2DestroyModel_8u(DaxiBlobModel** model);
DAX_API DaxStatus DAXI_BlobFindV3DestroyModel_8u(DaxiBlobModel** model);

/* Number of domains; 0 for a null list. Thread-safe. */
DAX_API uint32_t _DAXI_DomainCount(const DaxiDomainList* domains);

/* The domain with a label; null when there is none. Thread-safe. */
DAX_API const DaxiDomain* _DAXI_SelectDomainIndex(const DaxiDomainList* domains, uint32_t label);

DAX_END_DECLS

#endif
