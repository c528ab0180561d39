// nivlo-test-background RRGGBB: an opaque layer surface of one colour on the background layer of every
// output, standing for a desktop's own background. Prints "mapped" when each has been shown.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <type_traits>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>

namespace {

std::uint32_t color;
wl_compositor* compositor;
wl_shm* shm;
zwlr_layer_shell_v1* shell;
std::vector<wl_output*> outputs;

wl_buffer* makeBuffer(int width, int height) {
  const int size = width * height * 4;
  const int file = memfd_create("background", MFD_CLOEXEC);
  if (file < 0 || ftruncate(file, size) != 0) {
    std::abort();
  }
  auto* pixels =
      static_cast<std::uint32_t*>(mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0));
  std::fill_n(pixels, width * height, color);
  auto* pool = wl_shm_create_pool(shm, file, size);
  return wl_shm_pool_create_buffer(pool, 0, width, height, width * 4, WL_SHM_FORMAT_XRGB8888);
}

const zwlr_layer_surface_v1_listener kLayerListener{
    [](void* data, zwlr_layer_surface_v1* layer, std::uint32_t serial, std::uint32_t width,
       std::uint32_t height) {
      auto* surface = static_cast<wl_surface*>(data);
      zwlr_layer_surface_v1_ack_configure(layer, serial);
      wl_surface_attach(surface, makeBuffer(static_cast<int>(width), static_cast<int>(height)), 0, 0);
      wl_surface_commit(surface);
    },
    [](void*, zwlr_layer_surface_v1*) {}};

const wl_registry_listener kRegistryListener{
    [](void*, wl_registry* registry, std::uint32_t global, const char* interface, std::uint32_t) {
      const auto bind = [&](const wl_interface& wanted, auto*& object) {
        if (std::strcmp(interface, wanted.name) == 0) {
          void* bound = wl_registry_bind(registry, global, &wanted, 1);
          object = static_cast<std::remove_reference_t<decltype(object)>>(bound);
        }
      };
      wl_output* output = nullptr;
      bind(wl_compositor_interface, compositor);
      bind(wl_shm_interface, shm);
      bind(zwlr_layer_shell_v1_interface, shell);
      bind(wl_output_interface, output);
      if (output) {
        outputs.push_back(output);
      }
    },
    [](void*, wl_registry*, std::uint32_t) {}};

}  // namespace

int main(int count, char** arguments) {
  auto* display = wl_display_connect(nullptr);
  if (count != 2 || !display) {
    return 1;
  }
  color = static_cast<std::uint32_t>(std::stoul(arguments[1], nullptr, 16));
  wl_registry_add_listener(wl_display_get_registry(display), &kRegistryListener, nullptr);
  wl_display_roundtrip(display);
  for (auto* output : outputs) {
    auto* surface = wl_compositor_create_surface(compositor);
    auto* layer = zwlr_layer_shell_v1_get_layer_surface(shell, surface, output,
                                                        ZWLR_LAYER_SHELL_V1_LAYER_BACKGROUND, "desktop");
    zwlr_layer_surface_v1_add_listener(layer, &kLayerListener, surface);
    zwlr_layer_surface_v1_set_anchor(layer, 15);  // all edges
    zwlr_layer_surface_v1_set_exclusive_zone(layer, -1);
    wl_surface_commit(surface);
  }
  wl_display_roundtrip(display);  // for the sizes
  wl_display_roundtrip(display);  // for the pictures
  std::cout << "mapped" << std::endl;
  while (wl_display_dispatch(display) >= 0) {
  }
}
