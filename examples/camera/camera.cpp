#include "camera.h"

#include <algorithm>
#include <utility>

namespace live {

namespace {

// Calls a function of Aravis whose last argument receives the error.
template <class Call>
auto checked(const char* step, Call call) {
  GError* error = nullptr;
  const auto fail = [&] {
    const std::string text = std::string(step) + ": " + error->message;
    g_error_free(error);
    throw CameraError(text);
  };
  if constexpr (std::is_void_v<decltype(call(&error))>) {
    call(&error);
    if (error) fail();
  } else {
    auto result = call(&error);
    if (error) fail();
    return result;
  }
}

}  // namespace

void Camera::useFake() {
  for (unsigned i = 0; i < arv_get_n_interfaces(); ++i) arv_disable_interface(arv_get_interface_id(i));
  arv_enable_interface("Fake");
}

std::string Camera::list() {
  std::string names;
  for (unsigned i = 0; i < arv_get_n_devices(); ++i) {
    names += std::string("  ") + arv_get_device_id(i) + " (" + arv_get_device_address(i) + ")\n";
  }
  return names;
}

// Delegates, so that the destructor runs when opening fails halfway.
Camera::Camera(const std::string& name, double framesPerSecond, int queue) : Camera() {
  open(name);
  start(framesPerSecond, queue);
}

void Camera::open(const std::string& name) {
  arv_update_device_list();
  name_ = name;
  if (name_.empty() && arv_get_n_devices() > 0) name_ = arv_get_device_id(0);
  if (name_.empty()) throw CameraError("no camera found");
  camera_.reset(
      checked("cannot open the camera", [&](GError** error) { return arv_camera_new(name_.c_str(), error); }));
  if (!camera_) throw CameraError("no camera " + name_ + " found");
  g_signal_connect(arv_camera_get_device(camera_.get()), "control-lost", G_CALLBACK(onControlLost), this);
}

void Camera::start(double framesPerSecond, int queue) {
  ArvCamera* camera = camera_.get();
  checked("the camera has no 8-bit grey format",
          [&](GError** e) { arv_camera_set_pixel_format(camera, ARV_PIXEL_FORMAT_MONO_8, e); });
  checked("cannot set continuous acquisition",
          [&](GError** e) { arv_camera_set_acquisition_mode(camera, ARV_ACQUISITION_MODE_CONTINUOUS, e); });
  if (framesPerSecond > 0) {
    checked("cannot set the frame rate", [&](GError** e) { arv_camera_set_frame_rate(camera, framesPerSecond, e); });
  }
  const size_t bytes =
      checked("cannot read the frame size", [&](GError** e) { return arv_camera_get_payload(camera, e); });
  stream_.reset(checked("cannot create a stream",
                        [&](GError** e) { return arv_camera_create_stream(camera, nullptr, nullptr, e); }));
  if (!stream_) throw CameraError("cannot create a stream");
  // Besides the waiting ones, one buffer is being filled and one inspected.
  for (int i = 0; i < queue + 2; ++i) arv_stream_push_buffer(stream_.get(), arv_buffer_new_allocate(bytes));
  // The stream's thread runs from its creation on and counts frames without a buffer as lost.
  withoutRoomBefore_ = withoutRoom();
  started_ = std::chrono::steady_clock::now();
  checked("cannot start the acquisition", [&](GError** e) { arv_camera_start_acquisition(camera, e); });
}

Camera::~Camera() {
  if (!camera_) return;
  g_signal_handlers_disconnect_by_data(arv_camera_get_device(camera_.get()), this);
  // With a lost camera the command would only time out.
  if (!lost_) arv_camera_stop_acquisition(camera_.get(), nullptr);
}

Grab Camera::grab(uint64_t timeoutMicroseconds, const std::function<void(const Frame&)>& use) {
  ArvBuffer* buffer = arv_stream_timeout_pop_buffer(stream_.get(), timeoutMicroseconds);
  if (!buffer) return Grab::kNothing;
  // Returns the buffer in any case.
  const auto giveBack = [this](ArvBuffer* b) { arv_stream_push_buffer(stream_.get(), b); };
  const std::unique_ptr<ArvBuffer, decltype(giveBack)> held(buffer, giveBack);
  const bool fresh = gaps_.see(arv_buffer_get_frame_id(buffer));
  if (arv_buffer_get_status(buffer) != ARV_BUFFER_STATUS_SUCCESS ||
      arv_buffer_get_image_pixel_format(buffer) != ARV_PIXEL_FORMAT_MONO_8) {
    // Late packets of an abandoned frame fill a buffer of their own.
    return fresh ? Grab::kDamaged : Grab::kNothing;
  }
  size_t size = 0;
  gint padding = 0, rowsPadding = 0;
  const void* pixels = arv_buffer_get_image_data(buffer, &size);
  arv_buffer_get_image_padding(buffer, &padding, &rowsPadding);
  const int32_t width = arv_buffer_get_image_width(buffer), height = arv_buffer_get_image_height(buffer);
  const int32_t step = width + padding;
  // Size and format reported by the camera are checked.
  if (width < 1 || height < 1 || padding < 0 || int64_t{step} * height > static_cast<int64_t>(size))
    return Grab::kDamaged;
  use({static_cast<const uint8_t*>(pixels), step, width, height, arv_buffer_get_frame_id(buffer),
       static_cast<int64_t>(arv_buffer_get_system_timestamp(buffer) / 1000)});
  return Grab::kFrame;
}

uint64_t Camera::withoutRoom() const {
  guint64 completed = 0, failures = 0, withoutRoom = 0;
  arv_stream_get_statistics(stream_.get(), &completed, &failures, &withoutRoom);
  return withoutRoom;
}

uint64_t Camera::dropped() const {
  // For network cameras Aravis counts packets, not frames.
  if (arv_camera_is_gv_device(camera_.get())) return gaps_.lost();
  return std::max(gaps_.lost(), withoutRoom() - withoutRoomBefore_);
}

}  // namespace live
