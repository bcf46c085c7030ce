<textParams><textId>IDS_00100</textId><paramStr>Main meter</paramStr></textParams><textStr> </textStr><textId>IDS_00102</textId>
