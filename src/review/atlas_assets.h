// The style sheet and the script of the atlas page, written into it whole:
// the page loads nothing else.
#ifndef FLOORXPORT_REVIEW_ATLAS_ASSETS_H_
#define FLOORXPORT_REVIEW_ATLAS_ASSETS_H_

namespace fx::review {

// The page's style; the colour of each kind is added after it (.k-ID).
extern const char kAtlasStyle[];

// Fills a problem's cropped view with copies of the floor's elements and
// marks that lie in its view box while the card is on or near the screen,
// and empties it when it leaves. The page holds the drawing once; a crop
// copies only what it shows (found through a grid of the elements' boxes,
// made when the first crop is filled), since a <use> of the whole floor
// would clone all of it per crop: on a 2,000-room floor that made the
// first picture ten times slower. A click on an outline of the floor
// scrolls to its problem.
extern const char kAtlasScript[];

}  // namespace fx::review

#endif  // FLOORXPORT_REVIEW_ATLAS_ASSETS_H_
