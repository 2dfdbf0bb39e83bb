// A target needs a source; the precompiled header is what this one is for.
