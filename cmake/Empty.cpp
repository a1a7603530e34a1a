// A layer that has only headers still needs one translation unit.
