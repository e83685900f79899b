/* Presses keys in KWin as a keyboard would, through KWin's own protocol for that (org_kde_kwin_fake_input). Reads one
 * word and its numbers a line from standard input: "press KEY", "release KEY" (evdev key codes), "point X Y". Answers
 * each with "done" once KWin has handled it. */

#include "fake-input-client-protocol.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <wayland-client.h>

static struct org_kde_kwin_fake_input* input;

static void announced(void* data, struct wl_registry* registry, uint32_t name, const char* interface,
                      uint32_t version) {
    (void)data;
    if (strcmp(interface, org_kde_kwin_fake_input_interface.name) == 0 && version >= 4) {
        input = wl_registry_bind(registry, name, &org_kde_kwin_fake_input_interface, 4);
    }
}

static void removed(void* data, struct wl_registry* registry, uint32_t name) {
    (void)data;
    (void)registry;
    (void)name;
}

static void complain(const char* what) {
    fprintf(stderr, "%s\n", what);
    exit(EXIT_FAILURE);
}

int main(void) {
    static const struct wl_registry_listener listener = {announced, removed};
    char word[16];
    struct wl_display* display = wl_display_connect(NULL);
    if (display == NULL) {
        complain("no Wayland display");
    }
    struct wl_registry* registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &listener, NULL);
    if (wl_display_roundtrip(display) < 0 || input == NULL) {
        complain("no org_kde_kwin_fake_input");
    }
    org_kde_kwin_fake_input_authenticate(input, "test", "presses keys");
    while (scanf("%15s", word) == 1) {
        unsigned key = 0;
        double x = 0;
        double y = 0;
        if (strcmp(word, "point") == 0 && scanf("%lf %lf", &x, &y) == 2) {
            org_kde_kwin_fake_input_pointer_motion_absolute(input, wl_fixed_from_double(x), wl_fixed_from_double(y));
        } else if (scanf("%u", &key) == 1) {
            org_kde_kwin_fake_input_keyboard_key(input, key, strcmp(word, "press") == 0 ? 1 : 0);
        } else {
            complain("not understood");
        }
        if (wl_display_roundtrip(display) < 0) {
            complain("KWin is gone");
        }
        puts("done");
        fflush(stdout);
    }
    org_kde_kwin_fake_input_destroy(input);
    wl_registry_destroy(registry);
    wl_display_disconnect(display);
    return EXIT_SUCCESS;
}
