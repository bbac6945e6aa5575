// The studio's page: HTML with its style sheet and script inline, generated
// at build time from src/studio/web (embed_page.mjs), so the program serves
// it without reading or fetching anything.
#ifndef FLOORXPORT_STUDIO_STUDIO_PAGE_H_
#define FLOORXPORT_STUDIO_STUDIO_PAGE_H_

namespace fx::studio {

extern const char kStudioPage[];

}  // namespace fx::studio

#endif  // FLOORXPORT_STUDIO_STUDIO_PAGE_H_
