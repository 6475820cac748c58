# A list stores the row that is tapped, and nothing when it is opened, whether the setting's value is in it or not. Here
# the port was typed by name, the volume is a missing card, and the file has a comment and a line of another tool.
$ printf '; by hand\n[Settings]\nComPort=Meter 7\nOther=kept\nStorageVolume=E:\\\n' > settings.ini && cp settings.ini before.ini
$ quorin-console --device s60 --volume 'C:\=4096' --volume 'D:\=2048' --strict
> choose Preferences...
{"done":"choose"}
> tick 200
{"done":"tick"}
> tap 1
{"done":"tap"}
> tick 5000
{"done":"tick"}
> show
      Select Volume
    --------------------------------------------------------------------------------
    > C:\
      D:\
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
> choose Back
{"done":"choose"}
> tick 200
{"done":"tick"}
> tap 2
{"done":"tap"}
> tick 5000
{"done":"tick"}
> show
      Com Port
    --------------------------------------------------------------------------------
    > OFF
      SERVER
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
> choose Back
{"done":"choose"}
> tick 200
{"done":"tick"}
# The preferences return to the row that was left, which stores nothing either.
> show
      Preferences
    --------------------------------------------------------------------------------
      Zoom
      Select Storage Volume...
    > Bluetooth Serial Setup...
      Toggle Colour: On
      Enter Custom Serial ID...
      Debug
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
> choose Back
{"done":"choose"}
> choose Preferences...
{"done":"choose"}
> tick 200
{"done":"tick"}
> choose Back
{"done":"choose"}
$ cmp settings.ini before.ini && cat settings.ini
; by hand
[Settings]
ComPort=Meter 7
Other=kept
StorageVolume=E:\

# The same if the values are in the lists, whose rows are then selected.
$ sed -i 's/^ComPort=.*/ComPort=SERVER/; s/^StorageVolume=.*/StorageVolume=D:\\/' settings.ini && cp settings.ini before.ini
$ quorin-console --device s60 --volume 'C:\=4096' --volume 'D:\=2048' --strict
> choose Preferences...
{"done":"choose"}
> tick 200
{"done":"tick"}
> tap 1
{"done":"tap"}
> tick 200
{"done":"tick"}
> show
      Select Volume
    --------------------------------------------------------------------------------
      C:\
    > D:\
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
> key 27
{"done":"key"}
> tick 200
{"done":"tick"}
> tap 2
{"done":"tap"}
> tick 200
{"done":"tick"}
> show
      Com Port
    --------------------------------------------------------------------------------
      OFF
    > SERVER
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
> close
{"done":"close"}
> choose Back
{"done":"choose"}
$ cmp settings.ini before.ini

# A tap stores its row and leaves. With the keys, the arrow stores and the select key leaves.
$ quorin-console --device s60 --volume 'C:\=4096' --volume 'D:\=2048' --strict
> choose Preferences...
{"done":"choose"}
> tick 200
{"done":"tick"}
> tap 1
{"done":"tap"}
> tick 200
{"done":"tick"}
> tap 0
{"done":"tap"}
> tick 200
{"done":"tick"}
> tap 2
{"done":"tap"}
> tick 200
{"done":"tick"}
> key 38
{"done":"key"}
> key 310
{"done":"key"}
> tick 200
{"done":"tick"}
> show
      Preferences
    --------------------------------------------------------------------------------
      Zoom
      Select Storage Volume...
    > Bluetooth Serial Setup...
      Toggle Colour: On
      Enter Custom Serial ID...
      Debug
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
$ cat settings.ini
; by hand
[Settings]
ComPort=OFF
Other=kept
StorageVolume=C:\
