# Libraries for the files of others.
include(FloklukOptional)

flokluk_optional(HDF5 HEADER hdf5.h IN hdf5/serial LIBRARIES hdf5_serial hdf5)
flokluk_optional(TIFF HEADER tiffio.h LIBRARIES tiff)
flokluk_optional(ZLIB HEADER zlib.h LIBRARIES z)
flokluk_optional(KISSFFT HEADER kissfft/kiss_fftr.h LIBRARIES kissfft-float)
