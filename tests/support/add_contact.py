#!/usr/bin/python3
"""add_contact.py BOOK VCARD: puts a contact into an address book of the session's desktop and prints its id."""

import sys

import dbus

service = "org.gnome.evolution.dataserver.AddressBook"
book, vcard = sys.argv[1:]
bus = dbus.SessionBus()
factory = bus.get_object(f"{service}10", "/org/gnome/evolution/dataserver/AddressBookFactory")
path, name = factory.OpenAddressBook(book, dbus_interface=f"{service}Factory")
opened = bus.get_object(name, path)
opened.Open(dbus_interface=service)
print(opened.CreateContacts([vcard], dbus.UInt32(0), dbus_interface=service)[0])
