/* Blob labelling: the connected regions (domains) of a mask, as chains of runs.
 *
 * Any non-zero pixel is foreground. Domains are numbered from 0 in raster order of their first pixel. The result lives
 * in the caller's model memory and refers to nothing else: the mask and the work buffer may go once the call has
 * returned. The sequence is: ask both sizes, allocate, DAXI_BlobFind, then read the list or hand it to blob selection.
 */
#ifndef DAXI_BLOB_FIND_H
#define DAXI_BLOB_FIND_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Ends a chain of runs. */
#define DAXI_RUN_END 0xFFFFFFFFu

/* The largest image side that run fields can hold. */
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

/* A domain: its first run, from which `next` leads through the others in raster order. */
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

/* Bytes of model memory that the worst image of this size needs: ceil(w / 2) runs a row, and as many domains as can lie
 * apart. `connectivity` as in DAXI_BlobFind_8u_C1R.
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
 * A failed call writes nothing. Only as much of the model is touched as the image has runs. Thread-safe for distinct
 * memory. */
DAX_API DaxStatus DAXI_BlobFind_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                       void* model, const DaxiDomainList** domains, void* buffer);

/* The same with the image's pointer not const, for hosts that pass their own buffer: the image is left as it is. The
 * _IS form takes an instruction-set code; checked last: isa < 0 -> 0x1000001c. */
DAX_API DaxStatus DAXI_BlobFind_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity, void* model,
                                        const DaxiDomainList** domains, void* buffer);
DAX_API DaxStatus DAXI_BlobFind_8u_C1IR_IS(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                           void* model, const DaxiDomainList** domains, void* buffer, int32_t isa);

/* Sizes for labelling by class, where every pixel can be a domain of its own. One more check, the last: width * height
 * above 2^32 - 2, which run indices cannot hold -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_BlobFindMultiClsModelSize_8u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_BlobFindMultiClsBufferSize_8u(DaxiSize size, uint64_t* bytes);

/* Labels an image of classes: the value of a pixel is its class, 0 is background. A run ends where the value changes,
 * only runs of one class join, and every run carries its class. Arguments and checks as DAXI_BlobFind_8u_C1R, with
 * memory of the MultiCls sizes; width * height above 2^32 - 2 -> 0x1000001a. Forms as above. */
DAX_API DaxStatus DAXI_BlobFindMultiCls_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                               void* model, const DaxiDomainList** domains, void* buffer);
DAX_API DaxStatus DAXI_BlobFindMultiCls_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                                void* model, const DaxiDomainList** domains, void* buffer);
DAX_API DaxStatus DAXI_BlobFindMultiCls_8u_C1IR_IS(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                                   void* model, const DaxiDomainList** domains, void* buffer,
                                                   int32_t isa);

/* A labelling's memory, owned by the library: as large as the image's contents ask for, not as the worst image would.
 */
typedef struct DaxiBlobModel DaxiBlobModel;

/* Labels a mask into a new model. `*model` is written, whatever it held; release it with
 * DAXI_BlobFindV2DestroyModel_8u. The list lives as long as the model.
 *
 * Checks, in order: a null pointer -> 0x10000014; a side outside 1..65536 -> 0x1000001a; step < width -> 0x1000001b; no
 * memory -> 0x1000002b. A failed call writes nothing and keeps no memory. Thread-safe. */
DAX_API DaxStatus DAXI_BlobFindV2_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                         DaxiBlobModel** model, const DaxiDomainList** domains);
DAX_API DaxStatus DAXI_BlobFindV2_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                          DaxiBlobModel** model, const DaxiDomainList** domains);

/* Labels a mask into a model that is kept from call to call: `*model` is null at first, and later what an earlier call
 * left there. A stream of images allocates only when it meets its largest. The list of the call before is gone. Checks
 * as the second version; after a failure the model can be used again. Thread-safe for distinct models. */
DAX_API DaxStatus DAXI_BlobFindV3_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                          DaxiBlobModel** model, const DaxiDomainList** domains);

/* Releases a model and sets `*model` to null; a null `*model` is ignored, so that releasing twice is harmless. model
 * null -> 0x10000014. */
DAX_API DaxStatus DAXI_BlobFindV2DestroyModel_8u(DaxiBlobModel** model);
DAX_API DaxStatus DAXI_BlobFindV3DestroyModel_8u(DaxiBlobModel** model);

/* Number of domains; 0 for a null list. Thread-safe. */
DAX_API uint32_t _DAXI_DomainCount(const DaxiDomainList* domains);

/* The domain with a label, or null when there is none. Thread-safe. */
DAX_API const DaxiDomain* _DAXI_SelectDomainIndex(const DaxiDomainList* domains, uint32_t label);

DAX_END_DECLS

#endif
