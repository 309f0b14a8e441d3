// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyProgramSources_p.h"

#include <array>

namespace {

// One triangle that covers the target, made from the vertex number alone.
constexpr std::string_view cPreviousVertex = R"(#version 150
uniform vec4 kyTexCoordTransform; // scale and offset
out vec2 vTexCoord;
void main() {
    vec2 corner = vec2(float((gl_VertexID << 1) & 2), float(gl_VertexID & 2));
    vTexCoord = corner * kyTexCoordTransform.xy + kyTexCoordTransform.zw;
    gl_Position = vec4(corner * 2.0 - 1.0, 0.0, 1.0);
}
)";

constexpr std::string_view cPreviousFragment = R"(#version 150
uniform sampler2D kyPrevious;
in vec2 vTexCoord;
out vec4 kyFragment;
void main() {
    kyFragment = texture(kyPrevious, vTexCoord);
}
)";

constexpr std::string_view cBackgroundFragment = R"(#version 150
uniform vec4 kyTop;
uniform vec4 kyBottom;
in vec2 vTexCoord;
out vec4 kyFragment;
// Noise of one step of an 8-bit channel, so that a slow gradient shows no bands.
float getNoise(vec2 p) {
    return fract(52.9829189 * fract(dot(p, vec2(0.06711056, 0.00583715)))) - 0.5;
}
void main() {
    vec4 colour = mix(kyBottom, kyTop, smoothstep(0.0, 1.0, vTexCoord.y));
    if (kyTop != kyBottom)
        colour.rgb += getNoise(gl_FragCoord.xy) / 255.0;
    kyFragment = vec4(colour.rgb * colour.a, colour.a);
}
)";

constexpr std::string_view cSceneVertex = R"(#version 150
in vec3 kyPosition;
in vec3 kyNormal;
in vec2 kyTexCoord;
in vec4 kyColor;
uniform mat4 kyModelView;
uniform mat4 kyProjection;
uniform mat3 kyNormalMatrix;
out vec3 vPosition;
out vec3 vNormal;
out vec2 vTexCoord;
out vec4 vColor;
void main() {
    vec4 position = kyModelView * vec4(kyPosition, 1.0);
    vPosition = position.xyz;
    vNormal = kyNormalMatrix * kyNormal;
    vTexCoord = kyTexCoord;
    vColor = kyColor;
    gl_Position = kyProjection * position;
}
)";

// Lighting is computed in linear light, in the camera's frame. Sky and ground light come from above and below; the key
// light has a wide soft highlight; the rim sets silhouettes off from the background.
constexpr std::string_view cSceneFragment = R"(#version 150
const int cMaxLights = 8;
uniform vec4 kyMaterialColor;
uniform float kyRoughness;
uniform float kyMetalness;
uniform vec3 kyUp;
uniform vec3 kySky;
uniform vec3 kyGround;
uniform int kyNbLights;
uniform vec4 kyLightPosition[cMaxLights]; // w 0: direction towards the light
uniform vec3 kyLightColor[cMaxLights];
uniform float kyLightRange[cMaxLights];
uniform bool kyIsPerspective;
uniform bool kyIsLit;
uniform bool kyHasTexture;
uniform sampler2D kyTexture;
uniform int kyTextureAlpha; // 0 ignored, 1 straight, 2 multiplied with the colours already
uniform bool kyIsTextureFlipped;
in vec3 vPosition;
in vec3 vNormal;
in vec2 vTexCoord;
in vec4 vColor;
out vec4 kyFragment;

vec3 toLinear(vec3 c) { return c * (c * (c * 0.305306011 + 0.682171111) + 0.012522878); }

vec3 toDisplay(vec3 c) {
    // A shoulder instead of clipping: bright colours keep their hue.
    c = mix(c, 1.0 - exp(-c), step(0.6, c) * smoothstep(0.6, 1.6, c));
    return pow(clamp(c, 0.0, 1.0), vec3(1.0 / 2.2));
}

vec3 getSpecular(vec3 normal, vec3 view, vec3 light, vec3 reflectance, float roughness) {
    vec3 halfway = normalize(view + light);
    float a2 = roughness * roughness * roughness * roughness;
    float nh = max(dot(normal, halfway), 0.0);
    float denominator = nh * nh * (a2 - 1.0) + 1.0;
    float lh = max(dot(light, halfway), 0.1);
    float strength = a2 / (denominator * denominator * lh * lh * (roughness * roughness * 4.0 + 2.0));
    return reflectance * strength;
}

// The texture as it is, the colours multiplied with alpha.
vec4 getTexel(vec2 position) {
    vec4 texel = texture(kyTexture, position);
    texel.a = kyTextureAlpha == 0 ? 1.0 : texel.a;
    return kyTextureAlpha == 1 ? vec4(texel.rgb * texel.a, texel.a) : texel;
}

// The mean of what lies under the pixel: pictures drawn by others come without smaller copies. Not premultiplied.
vec4 getTextureColor() {
    vec2 position = kyIsTextureFlipped ? vec2(vTexCoord.x, 1.0 - vTexCoord.y) : vTexCoord;
    vec2 alongX = dFdx(position), alongY = dFdy(position), size = vec2(textureSize(kyTexture, 0));
    ivec2 count = ivec2(clamp(ceil(vec2(length(alongX * size), length(alongY * size)) - 0.25), 1.0, 6.0));
    vec4 sum = vec4(0.0);
    for (int y = 0; y < count.y; ++y)
        for (int x = 0; x < count.x; ++x) {
            vec2 offset = (vec2(x, y) + 0.5) / vec2(count) - 0.5;
            sum += getTexel(position + alongX * offset.x + alongY * offset.y);
        }
    sum /= float(count.x * count.y);
    return vec4(sum.rgb / max(sum.a, 1e-4), sum.a);
}

void main() {
    vec4 colour = kyMaterialColor * vColor;
    if (kyHasTexture)
        colour *= getTextureColor();
    if (!kyIsLit) {
        kyFragment = vec4(colour.rgb * colour.a, colour.a);
        return;
    }
    vec3 albedo = toLinear(colour.rgb);
    vec3 view = kyIsPerspective ? normalize(-vPosition) : vec3(0.0, 0.0, 1.0);
    vec3 normal = normalize(vNormal);
    // Both sides of a face are drawn; the one seen is the one lit. The face itself decides: at silhouettes the
    // interpolated normal may point away already.
    vec3 face = cross(dFdx(vPosition), dFdy(vPosition));
    if (dot(normal, face) < 0.0)
        normal = -normal;
    float roughness = clamp(kyRoughness, 0.08, 1.0);
    vec3 diffuse = albedo * (1.0 - kyMetalness);
    vec3 reflectance = mix(vec3(0.04), albedo, kyMetalness);

    float upness = dot(normal, kyUp) * 0.5 + 0.5;
    vec3 ambient = mix(kyGround, kySky, upness);
    float facing = max(dot(normal, view), 0.0);
    float fresnel = pow(1.0 - facing, 4.0);
    float mirrorUp = dot(reflect(-view, normal), kyUp);
    vec3 mirrored = mix(kyGround * 1.6, kySky * 1.9, smoothstep(-0.25, 0.35, mirrorUp)) +
                    (kySky + kyGround) * exp(-14.0 * mirrorUp * mirrorUp);
    vec3 glossy = reflectance + (max(vec3(1.0 - roughness), reflectance) - reflectance) * fresnel;
    vec3 sum = diffuse * ambient + glossy * mirrored;
    for (int i = 0; i < kyNbLights; ++i) {
        vec3 toLight = kyLightPosition[i].xyz - vPosition * kyLightPosition[i].w;
        float distance = length(toLight);
        vec3 light = toLight / max(distance, 1e-6);
        float fade = kyLightRange[i] > 0.0 ? clamp(1.0 - pow(distance / kyLightRange[i], 2.0), 0.0, 1.0) : 1.0;
        float incidence = max(dot(normal, light), 0.0);
        sum += kyLightColor[i] * fade * fade * incidence *
               (diffuse + getSpecular(normal, view, light, reflectance, roughness));
    }
    kyFragment = vec4(toDisplay(sum) * colour.a, colour.a);
}
)";

// Lines every unit and stronger ones every ten, as wide as a pixel however near or far, fading before they crowd; and
// the soft shade of what stands on the ground, from the outlines of its bounds.
constexpr std::string_view cGridFragment = R"(#version 150
uniform vec4 kyMaterialColor;
uniform vec4 kyAxisXColor;
uniform vec4 kyAxisZColor;
uniform float kyHalfDivisions;
const int cMaxShades = 16;
uniform int kyNbShades;
uniform vec4 kyShades[cMaxShades]; // middle and half size, in cells
uniform float kyShadeStrengths[cMaxShades];
in vec2 vTexCoord; // in cells, from the middle
out vec4 kyFragment;

float getLines(vec2 p, float width) {
    vec2 pixel = max(fwidth(p), vec2(1e-6));
    vec2 toLine = abs(fract(p - 0.5) - 0.5) / pixel;
    vec2 line = 1.0 - smoothstep(vec2(width * 0.5 - 0.5), vec2(width * 0.5 + 0.5), toLine);
    // Where cells get as small as pixels the lines become an even tone and then vanish.
    line *= 1.0 - smoothstep(vec2(0.15), vec2(0.6), pixel);
    return max(line.x, line.y);
}

float getAxis(float p, float width) {
    float pixel = max(fwidth(p), 1e-6);
    return 1.0 - smoothstep(width * 0.5 - 0.5, width * 0.5 + 0.5, abs(p) / pixel);
}

float getShade(vec2 p) {
    float light = 1.0;
    for (int i = 0; i < kyNbShades; ++i) {
        vec2 q = (p - kyShades[i].xy) / kyShades[i].zw;
        float radius = pow(dot(q * q, q * q), 0.25);
        light *= 1.0 - kyShadeStrengths[i] * (1.0 - smoothstep(0.25, 1.45, radius));
    }
    return 1.0 - light;
}

void main() {
    float fine = getLines(vTexCoord, 1.0) * 0.45;
    float coarse = getLines(vTexCoord / 10.0, 1.4);
    float strength = max(fine, coarse);
    vec4 colour = vec4(kyMaterialColor.rgb, kyMaterialColor.a * strength);
    float axisX = getAxis(vTexCoord.y, 1.8);
    float axisZ = getAxis(vTexCoord.x, 1.8);
    colour = mix(colour, kyAxisXColor, axisX * kyAxisXColor.a);
    colour = mix(colour, kyAxisZColor, axisZ * kyAxisZColor.a);
    float radius = length(vTexCoord) / max(kyHalfDivisions, 1e-6);
    colour.a *= 1.0 - smoothstep(0.35, 1.0, radius);
    float shade = getShade(vTexCoord);
    if (colour.a + shade < 0.004)
        discard;
    vec3 shadeColour = vec3(0.07, 0.08, 0.11) * shade;
    kyFragment = vec4(colour.rgb * colour.a + shadeColour * (1.0 - colour.a), colour.a + shade * (1.0 - colour.a));
}
)";

constexpr std::array<KyProgramSource, 7> cSources{{{"KyPrevious_vp.glsl", cPreviousVertex},
                                                   {"KyPrevious_fp.glsl", cPreviousFragment},
                                                   {"KyBackground_vp.glsl", cPreviousVertex},
                                                   {"KyBackground_fp.glsl", cBackgroundFragment},
                                                   {"KyScene_vp.glsl", cSceneVertex},
                                                   {"KyScene_fp.glsl", cSceneFragment},
                                                   {"KyGrid_fp.glsl", cGridFragment}}};

} // namespace

std::span<const KyProgramSource> kyGetProgramSources() {
    return cSources;
}
