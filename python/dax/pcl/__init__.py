"""Range images and point clouds."""
