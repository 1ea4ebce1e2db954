// A camera on the loopback interface, whose every frame shows the same parts: four bright bars, the n-th of them n times
// as long as the first. Runs until it is killed.
//
// usage: camera_simulator SERIAL
#include <arv.h>

#include <cstdio>
#include <cstring>

namespace {

void drawBars(ArvBuffer* buffer, void*, guint32, guint32, ArvPixelFormat) {
  auto* pixels = static_cast<unsigned char*>(const_cast<void*>(arv_buffer_get_image_data(buffer, nullptr)));
  const int width = arv_buffer_get_image_width(buffer), height = arv_buffer_get_image_height(buffer);
  if (width < 100 || height < 100) return;
  std::memset(pixels, 30, size_t(width) * size_t(height));
  for (int bar = 1; bar <= 4; ++bar) {
    for (int y = 20 * bar; y < 20 * bar + 10; ++y) std::memset(pixels + size_t(y) * width + 10, 200, size_t(20) * bar);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  ArvGvFakeCamera* camera = arv_gv_fake_camera_new("127.0.0.1", argv[1]);
  if (!arv_gv_fake_camera_is_running(camera)) {
    std::fprintf(stderr, "camera_simulator: the port of cameras is taken on the loopback interface\n");
    return 1;
  }
  ArvFakeCamera* const insides = arv_gv_fake_camera_get_fake_camera(camera);
  arv_fake_camera_set_fill_pattern(insides, drawBars, nullptr);
  // A program that is kept waiting by a busy machine does not lose control.
  constexpr guint32 kHeartbeatTimeoutRegister = 0x938;
  if (!arv_fake_camera_write_register(insides, kHeartbeatTimeoutRegister, 60000)) return 1;
  std::puts("running");
  std::fflush(stdout);
  for (;;) g_usleep(1000000);
}
