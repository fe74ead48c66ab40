// Empty: the library of the precompiled headers needs a source.
