// A rectangle in a tree of rectangles, each of which may hold a picture.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/AVFoundation/CaptureFrame.hpp"
#include "platform/AVFoundation/PictureGeometry.hpp"
#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// A layer shows its picture, if it has one, and its sublayers on top of that. A wallpaper that draws its own
/// pictures hands each finished one to `setContents`; one that shows a camera uses the subclass
/// AVCaptureVideoPreviewLayer, whose pictures come from its session.
///
/// Main thread only, except where a comment says otherwise.
class CALayer : public std::enable_shared_from_this<CALayer> {
 public:
  CALayer() = default;
  virtual ~CALayer() = default;
  CALayer(const CALayer&) = delete;
  CALayer& operator=(const CALayer&) = delete;

  /// In the superlayer's coordinates. A new frame is seen when any layer of the tree next gets a picture.
  CGRect frame() const { return frame_; }
  virtual void setFrame(CGRect frame) { frame_ = frame; }
  /// In the layer's own coordinates: the frame's size at the origin.
  CGRect bounds() const { return {{0, 0}, frame_.size}; }

  /// The last of them lies on top.
  const std::vector<std::shared_ptr<CALayer>>& sublayers() const { return sublayers_; }
  std::shared_ptr<CALayer> superlayer() const { return superlayer_.lock(); }
  /// Puts the layer on top of the other sublayers and removes it from its previous superlayer. Does nothing
  /// for null, for this layer itself and for a layer that contains it.
  void addSublayer(std::shared_ptr<CALayer> layer);
  void removeFromSuperlayer();

  /// The picture that the layer shows; null while it is empty. Callable from any thread.
  VideoFramePtr contents() const { return picture().picture; }
  /// Shows this picture from now on; null empties the layer. The picture fills the layer in its own
  /// proportions and is cropped where their shapes differ.
  ///
  /// Callable from any thread, several times a second: a wallpaper may draw on a thread of its own. It
  /// returns at once, and a picture that is replaced before the screen has taken it is never seen. The screen
  /// may go on reading a picture after it was replaced, so draw each one into memory that no `contents` still
  /// holds, and let `storage` say when it is free. Set `captureTime` to when the picture was drawn; the
  /// statistics of `nivlo status` count its age from there. BGRx costs the least to show.
  void setContents(VideoFramePtr picture);

  /// The picture that `contents` returns, with the way it is turned and mirrored. Callable from any thread.
  CaptureFrame picture() const;
  /// The way in which the picture is fitted into the layer: ResizeAspectFill, unless a subclass says
  /// otherwise.
  virtual AVLayerVideoGravity videoGravity() const { return AVLayerVideoGravity::ResizeAspectFill; }

  /// For the surface that shows the tree: the handler is called for each new picture of this layer and of
  /// every layer below it, including those that are added later, and replaces the one before. It is called on
  /// the thread that brings the picture and must be quick.
  void setPictureHandler(const std::function<void()>& handler);

 protected:
  /// Replaces the picture and calls the handler. Callable from any thread.
  void setPicture(CaptureFrame picture);

 private:
  std::function<void()> pictureHandler() const;

  CGRect frame_;
  std::weak_ptr<CALayer> superlayer_;
  std::vector<std::shared_ptr<CALayer>> sublayers_;
  mutable std::mutex mutex_;  ///< guards the two below
  CaptureFrame picture_;
  std::function<void()> pictureHandler_;
};

}  // namespace nivlo
