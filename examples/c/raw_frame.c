/* From the frame of a sensor to measured blobs: corrects the pixels of a Bayer pattern, takes grey, thresholds and measures.
 *
 * usage: raw_frame [FILE WIDTH HEIGHT]     FILE: bytes of an RGGB pattern, row by row; without, a frame is made
 *
 * The frame that is made has what a sensor does to it: darker corners, an offset that grows along the rows, dead and hot pixels. */
#include <dax.h>
#include <daxi.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { MAX_BLOBS = 16, MAX_SIDE = 16384, MIN_AREA = 50 };

/* What a camera would be calibrated with: a dark frame, the gains of a flat field, a map of defects; and the frame itself. */
typedef struct Sensor {
  DaxiSize size;
  uint8_t *frame, *dark, *defects, *gray;
  float* gain;
} Sensor;

static int allocate(Sensor* s, int32_t width, int32_t height) {
  const size_t pixels = (size_t)width * (size_t)height;
  s->size.width = width, s->size.height = height;
  s->frame = calloc(pixels, 1), s->dark = calloc(pixels, 1), s->defects = calloc(pixels, 1),
  s->gray = calloc(pixels, 1);
  s->gain = malloc(pixels * sizeof *s->gain);
  for (size_t i = 0; s->gain && i < pixels; ++i) s->gain[i] = 1;
  return s->frame && s->dark && s->defects && s->gray && s->gain;
}

static void release(Sensor* s) {
  free(s->frame), free(s->dark), free(s->defects), free(s->gray), free(s->gain);
}

/* Three yellow disks on a dark ground. */
static int isDisk(int32_t x, int32_t y) {
  static const int32_t disks[3][3] = {{60, 50, 20}, {150, 110, 30}, {270, 60, 15}};
  for (int i = 0; i < 3; ++i) {
    const int32_t dx = x - disks[i][0], dy = y - disks[i][1];
    if (dx * dx + dy * dy <= disks[i][2] * disks[i][2]) return 1;
  }
  return 0;
}

static void makeFrame(Sensor* s) {
  const int32_t width = s->size.width, height = s->size.height;
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      const size_t i = (size_t)y * (size_t)width + (size_t)x;
      const int isBlue = x % 2 == 1 && y % 2 == 1;
      const float level = isDisk(x, y) ? (isBlue ? 40.0f : 150.0f) : 30.0f;
      const float dx = (float)(2 * x - width) / (float)width, dy = (float)(2 * y - height) / (float)height;
      const float light = 1 - 0.25f * (dx * dx + dy * dy);
      s->dark[i] = (uint8_t)(4 + 8 * x / width);
      s->gain[i] = 1 / light;
      s->frame[i] = (uint8_t)(s->dark[i] + level * light);
      s->defects[i] = (uint8_t)((7 * x + 13 * y) % 997 == 0);
      if (s->defects[i]) s->frame[i] = (uint8_t)(x % 2 ? 0 : 255);
    }
  }
}

static int readFrame(Sensor* s, const char* path) {
  const size_t pixels = (size_t)s->size.width * (size_t)s->size.height;
  FILE* const file = fopen(path, "rb");
  const int isRead = file && fread(s->frame, 1, pixels, file) == pixels;
  if (file) fclose(file);
  return isRead;
}

static DaxStatus correct(Sensor* s, int64_t* unmended) {
  const int32_t step = s->size.width;
  DaxStatus status = DAXI_FlatField_8u_C1IR(s->dark, step, s->gain, step, s->frame, step, s->size);
  if (!status)
    status = DAXI_ReplaceDefects_8u_C1R(s->frame, step, s->defects, step, s->frame, step, s->size, 2, unmended);
  if (!status) status = DAXI_BayerMHCToGray_8u_C1R(s->frame, step, s->gray, step, s->size, DAXI_BAYER_RGGB);
  return status;
}

/* Bright blobs from MIN_AREA pixels on, the largest first. */
static DaxStatus measure(Sensor* s, BlobInfo* blobs, uint32_t* found) {
  const int32_t step = s->size.width;
  uint64_t modelBytes = 0, findBytes = 0, selectBytes = 0;
  DAXI_BlobFindModelSize_8u(s->size, 8, &modelBytes);
  DAXI_BlobFindBufferSize_8u(s->size, 8, &findBytes);
  DAXI_BlobSelectBufferSize_8u(s->size, &selectBytes);
  void *model = malloc(modelBytes), *findBuffer = malloc(findBytes), *selectBuffer = malloc(selectBytes);
  const BlobSelectCfg cfg = {.maxCount = MAX_BLOBS,
                             .flags = DAXI_BLOB_BY_AREA,
                             .area = {MIN_AREA, 1e9f},
                             .sortOrder = DAXI_BLOB_DESCENDING,
                             .sortKey = DAXI_BLOB_KEY_AREA};
  BlobSelectResult result = {blobs, 0, NULL};
  const DaxiDomainList* domains = NULL;

  DaxStatus status = DAXI_AdpThresholdOtsu_8u_C1IR(s->gray, step, s->size);
  if (!status) status = DAXI_BlobFind_8u_C1R(s->gray, step, s->size, 8, model, &domains, findBuffer);
  const int32_t count = status ? 0 : (int32_t)_DAXI_DomainCount(domains);
  if (!status && count > 0)
    status = DAXI_BlobSelect_8u_C1R(s->gray, step, s->gray, step, s->size, domains, count, &result, &cfg, selectBuffer);
  *found = result.count;
  free(model), free(findBuffer), free(selectBuffer);
  return status;
}

int main(int argc, char** argv) {
  const int32_t width = argc > 3 ? (int32_t)strtol(argv[2], NULL, 10) : 320;
  const int32_t height = argc > 3 ? (int32_t)strtol(argv[3], NULL, 10) : 160;
  Sensor sensor;
  BlobInfo blobs[MAX_BLOBS];
  uint32_t found = 0;
  int64_t unmended = 0;
  memset(&sensor, 0, sizeof sensor);
  if (width < 2 || height < 2 || width > MAX_SIDE || height > MAX_SIDE || !allocate(&sensor, width, height)) {
    fprintf(stderr, "raw_frame: no memory for %d x %d pixels\n", (int)width, (int)height);
    release(&sensor);
    return 1;
  }
  if (argc > 3 && !readFrame(&sensor, argv[1])) {
    fprintf(stderr, "raw_frame: %s has less than %d x %d bytes\n", argv[1], (int)width, (int)height);
    release(&sensor);
    return 1;
  }
  if (argc <= 3) makeFrame(&sensor);

  DaxStatus status = correct(&sensor, &unmended);
  if (!status) status = measure(&sensor, blobs, &found);
  printf("%s, %u blobs, %d defects left\n", DAX_GetStatusText(status), found, (int)unmended);
  for (uint32_t i = 0; i < found; ++i) {
    printf("area %.0f at (%.1f, %.1f)\n", blobs[i].area, blobs[i].centroidX, blobs[i].centroidY);
  }
  release(&sensor);
  return status != 0;
}
