// The picture route of CZelBitmap::LoadBitmap over Qt's image readers (every format
// of the Qt image plugins installed: PNG, JPEG, GIF, BMP, ICO and others).
//
// The widget library installs it by itself when it is loaded; a program that uses
// only the core may call ZelInstallQtPictureLoader once a QGuiApplication exists or
// not at all, as the readers need no application object.
#pragma once

#include <Zel260/platform/CBitmap.h>

#include <cstddef>

// Installs ZelQtLoadPicture as the picture route (see ZelSetPictureLoader).
void ZelInstallQtPictureLoader();
// Decodes a whole picture file in memory into a new 32-bit bitmap; null when no
// reader knows it or it is damaged.
HBITMAP ZelQtLoadPicture(const void* data, std::size_t size);
