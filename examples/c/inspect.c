/* Finds the bright blobs of a small image and prints what they measure. */
#include <dax.h>
#include <daxi.h>
#include <stdio.h>
#include <stdlib.h>

static const DaxiSize size = {8, 5};
static uint8_t image[5][8] = {{10, 10, 10, 10, 10, 10, 10, 10},
                              {10, 200, 210, 10, 10, 10, 10, 10},
                              {10, 205, 220, 10, 10, 190, 10, 10},
                              {10, 10, 10, 10, 180, 200, 195, 10},
                              {10, 10, 10, 10, 10, 10, 10, 10}};

int main(void) {
  uint64_t modelBytes = 0, findBytes = 0, selectBytes = 0;
  DAXI_BlobFindModelSize_8u(size, 8, &modelBytes);
  DAXI_BlobFindBufferSize_8u(size, 8, &findBytes);
  DAXI_BlobSelectBufferSize_8u(size, &selectBytes);
  void *model = malloc(modelBytes), *findBuffer = malloc(findBytes), *selectBuffer = malloc(selectBytes);

  BlobInfo blobs[16];
  BlobSelectResult result = {blobs, 0, NULL};
  /* Without a range the first 16 regions would be kept, not the largest. */
  const BlobSelectCfg cfg = {.maxCount = 16,
                             .flags = DAXI_BLOB_BY_AREA,
                             .area = {0, 1e9f},
                             .sortOrder = DAXI_BLOB_DESCENDING,
                             .sortKey = DAXI_BLOB_KEY_AREA};
  const DaxiDomainList* domains = NULL;

  DaxStatus status = DAXI_AdpThresholdOtsu_8u_C1IR(image[0], 8, size);
  if (!status) status = DAXI_BlobFind_8u_C1R(image[0], 8, size, 8, model, &domains, findBuffer);
  const int32_t count = (int32_t)_DAXI_DomainCount(domains);
  if (!status && count > 0) /* selecting from no blobs is an error */
    status = DAXI_BlobSelect_8u_C1R(image[0], 8, image[0], 8, size, domains, count, &result, &cfg, selectBuffer);

  printf("DAX %s: %s, %u blobs\n", DAX_GetVersion(), DAX_GetStatusText(status), result.count);
  for (uint32_t i = 0; i < result.count; ++i) {
    printf("area %.0f at (%.2f, %.2f)\n", blobs[i].area, blobs[i].centroidX, blobs[i].centroidY);
  }
  free(model), free(findBuffer), free(selectBuffer);
  return status != 0;
}
