/* SPDX-FileCopyrightText: 2026 The KyApplication authors */
/* SPDX-License-Identifier: MIT */
/* Stands in for SDL: the real one, with three joysticks plugged in. Built for i386 without that system's headers. */

enum { cRtldNow = 2, cJoystick = 0x200, cGameController = 0x2000, cKinds = 3 };

typedef unsigned short Uint16;
typedef unsigned int Uint32;

/* SDL_VirtualJoystickDesc of SDL 2.24 and later. */
typedef struct {
    Uint16 version, type, naxes, nbuttons, nhats, vendor, product, padding;
    Uint32 buttonMask, axisMask;
    const char* name;
    void* callbacks[7];
} Description;

extern void* dlopen(const char* name, int flags);
extern void* dlsym(void* library, const char* name);

static const Description cJoysticks[] = {
    {1, 1, 2, 10, 1, 0x046D, 0xC216, 0, 0, 0, "Pad", {0}},
    {1, 2, 3, 4, 0, 0x1111, 0x2222, 0, 0, 0, "Wheel", {0}},
    {1, 9, 6, 2, 0, 0x256F, 0xC626, 0, 0, 0, "Mouse", {0}},
};

int SDL_Init(Uint32 flags) {
    static int isAttached = 0;
    void* real = dlopen(KY_REAL_SDL, cRtldNow);
    int (*init)(Uint32) = dlsym(real, "SDL_Init");
    int (*attach)(const Description*) = dlsym(real, "SDL_JoystickAttachVirtualEx");
    const int result = init(flags);
    unsigned i;
    if (result == 0 && !isAttached && (flags & (cJoystick | cGameController)) != 0) {
        isAttached = 1;
        for (i = 0; i < cKinds; ++i)
            attach(&cJoysticks[i]);
    }
    return result;
}
